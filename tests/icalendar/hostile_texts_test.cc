#include <gtest/gtest.h>

#include "icalendar/reader.h"

namespace orlune {
namespace {

std::string Repeated(std::string_view text, int times) {
  std::string all;
  for (int i = 0; i < times; ++i) all += text;
  return all;
}

std::string EventIn(std::string_view lines) {
  return "BEGIN:VCALENDAR\nBEGIN:VEVENT\nUID:e@x\n" + std::string(lines) + "\nEND:VEVENT\nEND:VCALENDAR\n";
}

// A test that hangs here fails by the time limit of the suite.
TEST(HostileTexts, AreRefused) {
  constexpr TextFault kInvalid = TextFault::kInvalidText;
  constexpr TextFault kDays = TextFault::kTooManyDays;
  const std::string begin = "DTSTART:20261201T080000\n";
  const struct {
    const char* Name;
    std::string Text;
    TextFault Fault;
  } cases[] = {
      {"nothing", "", kInvalid},
      {"no calendar", "Hello", kInvalid},
      {"cut off", "BEGIN:VCALENDAR\nBEGIN:VEVENT\nUID:1\n", kInvalid},
      {"crossed ends", "BEGIN:VCALENDAR\nBEGIN:VEVENT\nEND:VCALENDAR\nEND:VEVENT\n", kInvalid},
      {"depth", Repeated("BEGIN:VCALENDAR\n", 50'000), kInvalid},
      {"NUL", EventIn(begin + std::string("SUMMARY:a\0b", 11)), kInvalid},
      {"not UTF-8", EventIn(begin + "SUMMARY:\xC3"), kInvalid},
      {"too large", EventIn(begin + "SUMMARY:" + std::string(kMostObjectBytes, 'a')), kInvalid},
      {"no event", "BEGIN:VCALENDAR\nEND:VCALENDAR\n", TextFault::kNotOneObject},
      {"METHOD", "BEGIN:VCALENDAR\nMETHOD:REQUEST\nEND:VCALENDAR\n", TextFault::kNotOneObject},
      {"two UIDs", EventIn(begin + "END:VEVENT\nBEGIN:VEVENT\nUID:other\n" + begin),
       TextFault::kNotOneObject},
      {"task", "BEGIN:VCALENDAR\nBEGIN:VTODO\nUID:1\nEND:VTODO\nEND:VCALENDAR\n",
       TextFault::kUnsupportedComponent},
      {"two masters", EventIn(begin + "END:VEVENT\nBEGIN:VEVENT\nUID:e@x\n" + begin), kInvalid},
      {"no DTSTART", EventIn("SUMMARY:a"), kInvalid},
      {"year 0", EventIn("DTSTART:00000101T000000"), kInvalid},
      {"year 9999", EventIn("DTSTART:99991231"), kInvalid},
      {"30 February", EventIn("DTSTART:20260230"), kInvalid},
      {"long UID", EventIn(begin + "END:VEVENT\nBEGIN:VEVENT\nUID:" + std::string(300, 'u')),
       TextFault::kNotOneObject},
      {"every second", EventIn(begin + "RRULE:FREQ=SECONDLY"), kDays},
      {"a million days", EventIn(begin + "RRULE:FREQ=DAILY;COUNT=1000000"), kDays},
      {"a million times a day",
       EventIn(begin + "RRULE:FREQ=DAILY;BYHOUR=1,2,3,4,5,6,7,8,9;BYMINUTE=1,2,3,4,5,6,7,8,9,"
                       "10,11,12,13,14,15,16,17,18,19,20;BYSECOND=1,2,3,4,5,6,7,8,9"),
       kDays},
      {"never, slowly", EventIn(begin + Repeated("RRULE:FREQ=DAILY;BYMONTH=2;BYMONTHDAY=30\n", 10)), kDays},
      {"huge list", EventIn(begin + "RRULE:FREQ=YEARLY;BYDAY=" + Repeated("MO,", 200'000) + "TU"), kInvalid},
      {"INTERVAL=0", EventIn(begin + "RRULE:FREQ=DAILY;INTERVAL=0"), kInvalid},
      {"all days left out", EventIn(begin + "EXDATE:20261201T080000"), kInvalid},
      {"a span of centuries", EventIn("DTSTART;VALUE=DATE:19000101\nDTEND;VALUE=DATE:29990101"), kDays},
      {"many days", EventIn("DTSTART;VALUE=DATE:20260101\nDURATION:P300D\nRRULE:FREQ=WEEKLY"), kDays},
      {"negative duration", EventIn(begin + "DURATION:-PT5M"), kInvalid},
      {"many periods", EventIn(begin + "RDATE:" + Repeated("20261202T080000,", 40'000) + "20261203T080000"),
       kDays},
  };
  const Reader reader;
  for (const auto& test : cases) {
    try {
      reader.Read(test.Text);
      ADD_FAILURE() << test.Name << " was taken";
    } catch (const InvalidCalendarText& fault) {
      EXPECT_EQ(fault.Fault, test.Fault) << test.Name << ": " << fault.what();
    }
  }
}

TEST(HostileTexts, ThatAreValidAreRead) {
  const std::string begin = "DTSTART:20261201T080000\n";
  std::string overrides;
  for (int i = 10; i < 3000; ++i)
    overrides += "END:VEVENT\nBEGIN:VEVENT\nUID:e@x\nRECURRENCE-ID:2026120" + std::to_string(1 + i % 9) +
                 "T" + "0800" + std::to_string(10 + i % 50) + "\n" + begin;
  const struct {
    const char* Name;
    std::string Text;
  } cases[] = {
      {"long line", EventIn(begin + "DESCRIPTION:" + std::string(1'000'000, 'a'))},
      {"many folds", EventIn(begin + "DESCRIPTION:" + Repeated("a\n ", 300'000))},
      {"many lines", EventIn(begin + Repeated("X:\n", 300'000))},
      {"many zones", EventIn(begin + Repeated("X;TZID=Mars/Olympus:1\n", 40'000))},
      {"many overrides", EventIn(begin + overrides)},
      {"never", EventIn(begin + "RRULE:FREQ=DAILY;BYMONTH=2;BYMONTHDAY=30")},
      {"endless zone",
       "BEGIN:VCALENDAR\nBEGIN:VTIMEZONE\nTZID:Mine\nBEGIN:STANDARD\nDTSTART:19000101T000000\nTZOFFSETFROM:+"
       "0000\n"
       "TZOFFSETTO:+0100\nRRULE:FREQ=DAILY\nEND:STANDARD\nEND:VTIMEZONE\nBEGIN:VEVENT\nUID:1\n"
       "DTSTART;TZID=Mine:20260101T080000\nEND:VEVENT\nEND:VCALENDAR\n"},
      {"path for a zone", EventIn("DTSTART;TZID=../../../etc/passwd:20260101T080000")},
      {"day by day for a lifetime", EventIn("DTSTART:19500101T080000\nRRULE:FREQ=DAILY;INTERVAL=7")},
  };
  const Reader reader;
  for (const auto& test : cases) {
    EXPECT_NO_THROW({
      const PlannedObject read = reader.Read(test.Text);
      reader.Texts.ObjectText({1, "n", read.Uid, read.Text, false, read.Events}, reader.Week);
    }) << test.Name;
  }
}

TEST(HostileFiles, AreReadAsFarAsTheyCanBeStored) {
  std::string file = "BEGIN:VCALENDAR\n";
  for (int i = 0; i < 2000; ++i)
    file += "BEGIN:VEVENT\nUID:" + std::to_string(i) +
            "\nDTSTART;TZID=America/New_York:19500101T230000\nDURATION:P5DT3H\n"
            "RRULE:FREQ=MONTHLY;BYDAY=MO,TU,WE,TH,FR;BYSETPOS=-2\nEND:VEVENT\n";
  const PlannedFile read =
      Reader().ReadFile(file + "BEGIN:VEVENT\nUID:last\nDTSTART:20261201\nEND:VEVENT\nEND:VCALENDAR\n");
  EXPECT_LT(read.Objects.size(), 100U);
  EXPECT_EQ(read.Objects.size() + read.Refused.size(), 2001U);
  EXPECT_EQ(read.Objects.back().Uid, "last");
}

TEST(RowsWithControlCharacters, KeepTheLinesOfTheirText) {
  const Reader reader;
  ObjectEvent row;
  row.Event.EventName =
      std::string("a\r\nEND:VEVENT\nb\0c\x01\x7F;,\\", 22) + std::string(80, 'x') + "ä&#39;&quot;";
  row.Event.BeginDate = row.Event.EndDate = kToday;
  const PlannedObject read =
      reader.Read(reader.Texts.ObjectText({0, "n", "u\nv", "", false, {row}}, reader.Week));
  EXPECT_EQ(read.Events.at(0).Event.EventName, "a END:VEVENT bc;,\\" + std::string(80, 'x') + "ä'\"");
}

}  // namespace
}  // namespace orlune
