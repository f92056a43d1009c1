#include <gtest/gtest.h>

#include "base/date_text.h"
#include "icalendar/line_writer.h"
#include "icalendar/reader.h"

namespace orlune {
namespace {

std::string TimeText(std::optional<TimeOfDay> time) {
  return time ? FormatTime("Hh:Nn", *time) : "-";
}

/// "place kind first..last begin-end", then the listed days and those left out.
std::string Described(const ObjectEvent& row) {
  const OL_Event& event = row.Event;
  std::string text = std::to_string(row.Place) + " " + std::string(StoredText(event.Type)) + " " +
                     DateText(event.BeginDate) + ".." + DateText(event.EndDate) + " " +
                     TimeText(event.BeginTime) + TimeText(event.EndTime);
  if (event.Type == Repetition::kByWeekday)
    text += " " + std::string(StoredText(*event.RepeatFrequency)) + " on " + event.RepeatWeekday;
  for (const Date day : row.Days.Listed) text += " +" + DateText(day);
  for (const Date day : row.Days.LeftOut) text += " !" + DateText(day);
  return text;
}

std::string Described(const std::vector<ObjectEvent>& rows) {
  std::string text;
  for (const ObjectEvent& row : rows) text += (text.empty() ? "" : "\n") + Described(row);
  return text;
}

std::string Override(std::string_view lines) {
  return " END:VEVENT BEGIN:VEVENT UID:e@x " + std::string(lines);
}

TEST(ReadingObjects, MakesRowsOfTimes) {
  struct Case {
    const char* Name;
    std::string Lines;
    const char* Rows;
  };
  const Case cases[] = {
      {"in UTC", "DTSTART:20261201T080000Z DTEND:20261201T090000Z", "0 none 20261201..20261201 10:0011:00"},
      {"floating with duration", "DTSTART:20261201T080000 DURATION:PT90M",
       "0 none 20261201..20261201 08:0009:30"},
      {"without end", "DTSTART:20261201T080000", "0 none 20261201..20261201 08:00-"},
      {"two whole days", "DTSTART;VALUE=DATE:20261201 DTEND;VALUE=DATE:20261203",
       "0 day 20261201..20261202 --"},
      {"until midnight", "DTSTART:20261201T200000 DTEND:20261202T000000", "0 none 20261201..20261201 20:00-"},
      {"over nights", "DTSTART:20261201T220000 DTEND:20261204T060000",
       "0 none 20261201..20261201 22:00-\n1 day 20261202..20261203 --\n2 none 20261204..20261204 00:0006:00"},
      {"night shift each week", "DTSTART:20261201T220000 DTEND:20261202T060000 RRULE:FREQ=WEEKLY;COUNT=3",
       "0 weekday 20261201..20261215 22:00- vko_1 on 3\n1 weekday 20261202..20261216 00:0006:00 vko_1 on 4"},
      {"a flight between zones",
       "DTSTART;TZID=Europe/Helsinki:20261201T160000 DTEND;TZID=America/New_York:20261201T180000",
       "0 none 20261201..20261201 16:00-\n1 none 20261202..20261202 00:0001:00"},
      {"other daylight-saving days",
       "DTSTART;TZID=America/New_York:20261013T090000 RRULE:FREQ=WEEKLY;COUNT=4",
       "0 weekday 20261013..20261103 16:00- vko_1 on 3 !20261027\n1 none 20261027..20261027 15:00-"},
      {"left out and moved",
       "DTSTART:20261201T080000 RRULE:FREQ=WEEKLY;COUNT=4 EXDATE:20261208T080000" +
           Override("RECURRENCE-ID:20261215T080000 DTSTART:20261216T100000"),
       "0 weekday 20261201..20261222 08:00- vko_1 on 3 !20261208 !20261215\n1000 none 20261216..20261216 "
       "10:00-"},
      {"cancelled day",
       "DTSTART:20261201T080000 RRULE:FREQ=DAILY;COUNT=3" +
           Override("RECURRENCE-ID:20261202T060000Z DTSTART:20261202T080000 STATUS:CANCELLED"),
       "0 day 20261201..20261203 08:00- !20261202"},
      {"from the third on later",
       "DTSTART:20261201T080000 RRULE:FREQ=WEEKLY;COUNT=4" +
           Override("RECURRENCE-ID;RANGE=THISANDFUTURE:20261215T080000 DTSTART:20261215T120000"),
       "0 weekday 20261201..20261208 08:00- vko_1 on 3\n1000 weekday 20261215..20261222 12:00- vko_1 on 3"},
      {"a first day out of its rule", "DTSTART:20261201T080000 RRULE:FREQ=WEEKLY;BYDAY=WE;COUNT=3",
       "0 month 20261201..20261209 08:00-"},
      {"only a moved day", "RECURRENCE-ID:20261215T080000 DTSTART:20261216T100000",
       "1000 none 20261216..20261216 10:00-"},
      {"weeks without end", "DTSTART;VALUE=DATE:20261201 RRULE:FREQ=WEEKLY;INTERVAL=2",
       "0 weekday 20261201..20991231 -- vko_2 on 3"},
      {"periods", "DTSTART:20261201T080000 DTEND:20261201T090000 RDATE;VALUE=PERIOD:20261205T100000/PT2H",
       "0 none 20261201..20261201 08:0009:00\n1 none 20261205..20261205 10:0012:00"},
      {"a rule that has no other day", "DTSTART:20261201T080000 RRULE:FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=30",
       "0 none 20261201..20261201 08:00-"},
      {"unknown zone", "DTSTART;TZID=Mars/Olympus:20261201T080000", "0 none 20261201..20261201 08:00-"},
      {"a time that the clocks leave out", "DTSTART:20270328T033000 DTEND:20270328T043000",
       "0 none 20270328..20270328 03:3004:30"},
      {"a day by the clock", "DTSTART:20270327T230000 DURATION:P1D",
       "0 none 20270327..20270327 23:00-\n1 none 20270328..20270328 00:0023:00"},
      {"24 hours", "DTSTART:20270327T230000 DURATION:PT24H",
       "0 none 20270327..20270327 23:00-\n1 none 20270328..20270328 --"},
  };
  const Reader reader;
  for (const Case& test : cases) {
    EXPECT_EQ(Described(reader.Read(EventText(test.Lines)).Events), test.Rows) << test.Name;
  }
}

TEST(ReadingObjects, ListsFiveYearsAheadOfSeriesWithoutEnd) {
  const Reader reader;
  const std::string text = EventText("DTSTART:20261127T080000 RRULE:FREQ=MONTHLY;BYDAY=-1FR");
  const PlannedObject read = reader.Read(text);
  ASSERT_EQ(read.Events.size(), 1U);
  EXPECT_EQ(read.Events[0].Event.Type, Repetition::kListed);
  EXPECT_EQ(read.ListedUntil, std::chrono::year{2036} / 11 / 27);
  const PlannedObject later = reader.Read(text, kToday + std::chrono::days{365 * 20});
  EXPECT_GT(later.Events[0].Days.Listed.size(), read.Events[0].Days.Listed.size());
  EXPECT_EQ(later.Events[0].Place, read.Events[0].Place);
}

TEST(ReadingObjects, TakesTextsAndTellsLosses) {
  const Reader reader;
  const PlannedObject read = reader.Read(
      "BEGIN:VCALENDAR\r\nBEGIN:VEVENT\r\nUID:e@x\r\nDTSTART:20261201T080000\r\nSUMMARY;LANGUAGE=en:Fish\\, "
      "\"che\r\n"
      " ap\"\\nand fresh\r\nDESCRIPTION:one\\ntwo\\\\\r\nCLASS:CONFIDENTIAL\r\nCATEGORIES:Food,travel\r\n"
      "LOCATION:Room\r\nATTENDEE:mailto:a@x\r\nBEGIN:VALARM\r\nTRIGGER:-PT5M\r\nEND:VALARM\r\nEND:VEVENT\r\n"
      "END:VCALENDAR\r\n");
  const OL_Event& event = read.Events.at(0).Event;
  EXPECT_EQ(event.EventName, "Fish, \"cheap\" and fresh");
  EXPECT_EQ(event.Comments, "one\r\ntwo\\");
  EXPECT_EQ(event.EventType, "Travel");
  EXPECT_TRUE(event.Private);
  EXPECT_EQ(read.Losses, (std::vector{Loss::kAlarms, Loss::kLocation, Loss::kAttendees}));
  EXPECT_EQ(reader.Read(EventText("DTSTART:20261201T080000")).Events.at(0).Event.EventName, "(untitled)");
}

TEST(ReadingFiles, TakesEachObjectOnceAndSaysWhatIsRefused) {
  const Reader reader;
  const PlannedFile file = reader.ReadFile(
      "BEGIN:VCALENDAR\nMETHOD:PUBLISH\nBEGIN:VTIMEZONE\nTZID:Ours\nBEGIN:STANDARD\nDTSTART:19700101T000000\n"
      "TZOFFSETFROM:+0500\nTZOFFSETTO:+0500\nEND:STANDARD\nEND:VTIMEZONE\n"
      "BEGIN:VEVENT\nUID:a\nDTSTART;TZID=Ours:20261201T080000\nRRULE:FREQ=DAILY;COUNT=3\nEND:VEVENT\n"
      "BEGIN:VEVENT\nDTSTART:20261201\nSUMMARY:No UID\nEND:VEVENT\n"
      "BEGIN:VEVENT\nUID:b\nDTSTART:20269901\nSUMMARY:Odd\nEND:VEVENT\n"
      "BEGIN:VTODO\nUID:c\nSUMMARY:Task\nEND:VTODO\n"
      "BEGIN:VEVENT\nUID:a\nRECURRENCE-ID;TZID=Ours:20261202T080000\nDTSTART:20261202T120000\nEND:VEVENT\n"
      "END:VCALENDAR\n");
  ASSERT_EQ(file.Objects.size(), 2U);
  EXPECT_EQ(Described(file.Objects[0].Events),
            "0 day 20261201..20261203 05:00- !20261202\n1000 none 20261202..20261202 12:00-");
  EXPECT_EQ(Described(reader.Read(file.Objects[0].Text).Events), Described(file.Objects[0].Events));
  EXPECT_EQ(reader.Read(file.Objects[1].Text).Uid, file.Objects[1].Uid);
  ASSERT_EQ(file.Refused.size(), 2U);
  EXPECT_EQ(file.Refused[0].Title, "Task");
  EXPECT_EQ(file.Refused[1].Title, "Odd");
}

}  // namespace
}  // namespace orlune
