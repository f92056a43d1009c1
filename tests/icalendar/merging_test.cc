#include <functional>

#include <gtest/gtest.h>

#include "exchange/row_text.h"
#include "icalendar/reader.h"

namespace orlune {
namespace {

using std::chrono::days;
using std::chrono::hours;

using Rows = std::vector<ObjectEvent>;

const std::string kZone =
    "BEGIN:VTIMEZONE\nTZID:Far\nBEGIN:STANDARD\nDTSTART:19700101T000000\nTZOFFSETFROM:+0900\nTZOFFSETTO:+"
    "0900\n"
    "END:STANDARD\nEND:VTIMEZONE\n";
const std::string kMeeting =
    "BEGIN:VEVENT\nUID:e@x\nDTSTAMP:20260101T000000Z\nDTSTART;TZID=Europe/"
    "Helsinki:20261201T080000\nDURATION:PT1H\n"
    "RRULE:FREQ=WEEKLY;COUNT=4\nSUMMARY:Meeting\nDESCRIPTION:Long\\ntext\nCATEGORIES:Food\nLOCATION:Room\nX-"
    "MINE;A=\"b:c\":d\n"
    "BEGIN:VALARM\nTRIGGER:-PT5M\nEND:VALARM\nEND:VEVENT\n";
const std::string kMoved =
    "BEGIN:VEVENT\nUID:e@x\nRECURRENCE-ID;TZID=Europe/Helsinki:20261208T080000\n"
    "DTSTART;TZID=Europe/Helsinki:20261209T100000\nSUMMARY:Moved\nX-HIS:1\nEND:VEVENT\n";
const std::string kNight =
    "BEGIN:VEVENT\nUID:e@x\nDTSTART:20261201T220000\nDTEND:20261202T060000\nSUMMARY:Night\nLOCATION:"
    "Gate\nEND:VEVENT\n";

std::string Calendar(const std::string& components) {
  return "BEGIN:VCALENDAR\nVERSION:2.0\nPRODID:-//Other//EN\nX-WR:1\n" + components + "END:VCALENDAR\n";
}

std::string WithLineFeeds(std::string_view text) {
  std::string plain;
  for (const char c : text) {
    if (c != '\r') plain += c;
  }
  return plain;
}

/// The rows of a text as the database has them.
Rows StoredRows(const Reader& reader, const std::string& text) {
  Rows rows = reader.Read(text).Events;
  for (ObjectEvent& row : rows) row.Event = AsStored(row.Event);
  return rows;
}

std::string Changed(const Reader& reader, const std::string& text, const std::function<void(Rows&)>& change) {
  CalendarObject object{1, "n", "e@x", text, false, StoredRows(reader, text)};
  change(object.Events);
  return reader.Texts.ObjectText(object, reader.Week);
}

std::string Replaced(std::string text, std::string_view from, std::string_view to) {
  const std::size_t place = text.find(from);
  EXPECT_NE(place, std::string::npos) << from;
  return text.replace(place, from.size(), to);
}

TEST(Merging, ChangesOnlyWhatRowsSayDifferently) {
  const Reader reader;
  const std::string series = Calendar(kMeeting + kMoved);
  const struct {
    const char* Name;
    std::string Text;
    std::function<void(Rows&)> Change;
    std::vector<const char*> Has;
    std::vector<const char*> HasNot;
  } cases[] = {
      {"a title",
       series,
       [](Rows& rows) { rows[0].Event.EventName = "It&#39;s new"; },
       {"SUMMARY:It's new\n", "SUMMARY:Moved\n", "DURATION:PT1H\n", "COUNT=4\n", "X-MINE;A=\"b:c\":d\n",
        "TRIGGER:-PT5M\n"},
       {"SUMMARY:Meeting", "EXDATE"}},
      {"all texts",
       series,
       [](Rows& rows) {
         rows[1].Event.Comments = "a\r\nb";
         rows[1].Event.Private = true;
         rows[1].Event.EventType = "Travel";
         rows[1].Event.SuggestState = SuggestionState::kUndecided;
       },
       {"DESCRIPTION:a\\nb\nCLASS:PRIVATE\nCATEGORIES:Travel\nSTATUS:TENTATIVE\n", "DESCRIPTION:Long",
        "X-HIS:1\n"},
       {}},
      {"the time of the series",
       series,
       [](Rows& rows) { rows[0].Event.BeginTime = hours{9}; },
       {"DTSTART;TZID=Europe/Helsinki:20261201T090000\n",
        "RECURRENCE-ID;TZID=Europe/Helsinki:20261208T090000\n",
        "DTSTART;TZID=Europe/Helsinki:20261209T100000\n", "TRIGGER:-PT5M\n",
        "BEGIN:VTIMEZONE\nTZID:Europe/Helsinki\n"},
       {"DURATION", "COUNT", "EXDATE"}},
      {"a day left out",
       series,
       [](Rows& rows) { rows[0].Days.LeftOut.push_back(Date{std::chrono::year{2026} / 12 / 22}); },
       {"EXDATE;TZID=Europe/Helsinki:20261222T080000\n", "LOCATION:Room\n"},
       {"20261208T080000,"}},
      {"the moved day deleted",
       series,
       [](Rows& rows) { rows.pop_back(); },
       {"COUNT=4\n", "EXDATE;TZID=\"Europe/Helsinki\":20261208T080000\n"},
       {"Moved"}},
      {"the series deleted",
       series,
       [](Rows& rows) { rows.erase(rows.begin()); },
       {"SUMMARY:Moved\n", "RECURRENCE-ID"},
       {"Meeting"}},
      {"the moved day moved again",
       series,
       [](Rows& rows) { rows[1].Event.BeginDate += days{1}; },
       {"DTSTART;TZID=Europe/Helsinki:20261210T100000\n", "20261208T080000\n", "X-HIS:1\n", "COUNT=4\n"},
       {"EXDATE"}},
      {"the title of a night",
       Calendar(kNight),
       [](Rows& rows) { rows[1].Event.EventName = "Late"; },
       {"SUMMARY:Late\n", "DTSTART:20261201T220000\nDTEND:20261202T060000\n"},
       {"Night"}},
      {"half a night",
       Calendar(kNight),
       [](Rows& rows) { rows.pop_back(); },
       {"DTSTART;TZID=Europe/Helsinki:20261201T220000\n", "LOCATION:Gate\n"},
       {"DTEND"}},
      {"a night that ends later",
       Calendar(kNight),
       [](Rows& rows) { rows[1].Event.EndTime = hours{7}; },
       {"DTSTART;TZID=Europe/Helsinki:20261201T220000\n",
        "RDATE;VALUE=PERIOD;TZID=Europe/Helsinki:20261202T000000/PT420M\n"},
       {}},
      {"nothing in another zone",
       Calendar(kZone + Replaced(kMeeting, "Europe/Helsinki", "Far")),
       [](Rows&) {},
       {"DTSTART;TZID=Far:20261201T080000\nDURATION:PT1H\nRRULE:FREQ=WEEKLY;COUNT=4\n"},
       {"TZID:Europe"}},
  };
  for (const auto& test : cases) {
    const std::string merged = Changed(reader, test.Text, test.Change);
    const std::string text = WithLineFeeds(merged);
    for (const char* part : test.Has)
      EXPECT_NE(text.find(part), std::string::npos) << test.Name << ": " << part << "\n" << text;
    for (const char* part : test.HasNot)
      EXPECT_EQ(text.find(part), std::string::npos) << test.Name << ": " << part << "\n" << text;
    // What was changed is what is read again.
    Rows expected = StoredRows(reader, test.Text);
    test.Change(expected);
    const Rows read = StoredRows(reader, merged);
    ASSERT_EQ(read.size(), expected.size()) << test.Name << "\n" << text;
    EXPECT_EQ(read.front().Event.BeginDate, expected.front().Event.BeginDate) << test.Name;
    EXPECT_EQ(read.front().Event.BeginTime, expected.front().Event.BeginTime) << test.Name;
    EXPECT_EQ(read.front().Days, expected.front().Days) << test.Name;
  }
}

TEST(Merging, FindsNoDifferenceInRowsOfATextThatListsDays) {
  const Reader reader;
  for (const char* lines : {"DTSTART;TZID=America/New_York:20261013T090000 RRULE:FREQ=WEEKLY",
                            "DTSTART:20261127T080000 RRULE:FREQ=MONTHLY;BYDAY=-1FR",
                            "DTSTART:20261201T220000 DTEND:20261202T060000 RRULE:FREQ=WEEKLY",
                            "DTSTART:20261201T220000 RDATE:20270101T220000,20270301T090000"}) {
    const std::string text = EventText(std::string("SUMMARY:Shift ") + lines);
    EXPECT_EQ(WithLineFeeds(Changed(reader, text, [](Rows&) {})), text) << lines;
  }
}

TEST(FileEntries, HaveNoListedDaysAndKeepWhatClientsSent) {
  const Reader reader;
  const auto entry = [&](const std::string& text) {
    return WithLineFeeds(
        reader.Texts.FileEntry({1, "n", "e@x", text, true, StoredRows(reader, text)}, reader.Week));
  };
  EXPECT_EQ(entry(Calendar(kMeeting + kMoved)), kMeeting + kMoved);
  const std::string far = entry(Calendar(kZone + Replaced(kMeeting, "Europe/Helsinki", "Far")));
  for (const char* part : {"UID:e@x\n", "DTSTART;TZID=Europe/Helsinki:20261201T010000\n", "BYDAY=TU",
                           "LOCATION:Room\n", "TRIGGER:-PT5M\n"})
    EXPECT_NE(far.find(part), std::string::npos) << part << far;
  const std::string listed =
      entry(Calendar(Replaced(kMeeting, "RRULE:FREQ=WEEKLY;COUNT=4", "RDATE:20261203T080000")));
  for (const char* part : {"UID:e@x-20261201\n", "UID:e@x-20261203\n", "LOCATION:Room\n"})
    EXPECT_NE(listed.find(part), std::string::npos) << part << listed;
  EXPECT_EQ(listed.find("RDATE"), std::string::npos);
}

}  // namespace
}  // namespace orlune
