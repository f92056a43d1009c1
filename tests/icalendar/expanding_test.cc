#include <gtest/gtest.h>

#include "icalendar/line_writer.h"
#include "icalendar/reader.h"

namespace orlune {
namespace {

/// "begin/end summary" of each event of a calendar.
std::vector<std::string> Spans(const std::string& text) {
  std::vector<std::string> spans;
  const std::string unfolded = Unfolded(text);
  const std::vector<Component> calendars = ReadComponents(unfolded);
  for (const Component& event : calendars.at(0).Children)
    spans.push_back(std::string(event.ValueOf("DTSTART")) + "/" + std::string(event.ValueOf("DTEND")) + " " +
                    std::string(event.ValueOf("SUMMARY")));
  return spans;
}

TEST(Expanding, GivesEachOccurrenceInUtc) {
  const Reader reader;
  const UtcPeriod period{Date{std::chrono::year{2027} / 1 / 1}, Date{std::chrono::year{2028} / 1 / 1}};
  const struct {
    const char* Name;
    const char* Lines;
    std::vector<std::string> Spans;
  } cases[] = {
      {"changed from one occurrence on",
       "DTSTART;TZID=Europe/Helsinki:20261228T100000 DTEND;TZID=Europe/Helsinki:20261228T110000 SUMMARY:T "
       "RRULE:FREQ=WEEKLY;COUNT=4 END:VEVENT BEGIN:VEVENT UID:e@x SUMMARY:Two "
       "RECURRENCE-ID;RANGE=THISANDFUTURE;TZID=Europe/Helsinki:20270111T100000 "
       "DTSTART;TZID=Europe/Helsinki:20270112T120000 DURATION:PT2H",
       {"20270104T080000Z/20270104T090000Z T", "20270119T100000Z/20270119T120000Z Two",
        "20270112T100000Z/20270112T120000Z Two"}},
      {"24 hours", "DTSTART:20270327T100000 DURATION:PT24H", {"20270327T080000Z/20270328T080000Z "}},
      {"a day by the clock", "DTSTART:20270327T100000 DURATION:P1D", {"20270327T080000Z/20270328T070000Z "}},
      {"a time that the clocks leave out",
       "DTSTART:20270328T033000 DTEND:20270328T043000",
       {"20270328T013000Z/20270328T023000Z "}},
      {"a time that comes twice",
       "DTSTART:20271031T033000 DTEND:20271031T043000",
       {"20271031T003000Z/20271031T013000Z "}},
      {"whole days",
       "DTSTART;VALUE=DATE:20271230 RRULE:FREQ=DAILY;COUNT=5 EXDATE;VALUE=DATE:20271231",
       {"20271230/20271231 ", "20280101/20280102 "}},
      {"out of the period", "DTSTART:20261231T100000 DTEND:20261231T230000", {}},
  };
  for (const auto& test : cases)
    EXPECT_EQ(Spans(reader.Texts.Expanded(EventText(test.Lines), period)), test.Spans) << test.Name;
}

TEST(FreeBusy, JoinsPeriodsThatTouchAndLeavesOutFreeOnes) {
  const Reader reader;
  const auto at = [](int hour) { return std::chrono::sys_seconds{kToday} + std::chrono::hours{hour}; };
  const BusyPeriod busy[] = {
      {at(1), at(3)}, {at(2), at(4), true}, {at(3), at(5)}, {at(6), at(7), false, true}, {at(9), at(30)}};
  const std::string text = reader.Texts.FreeBusyText({at(2), at(10)}, busy);
  for (const char* line : {"FREEBUSY;FBTYPE=BUSY:20261124T020000Z/20261124T050000Z\r\n",
                           "FREEBUSY;FBTYPE=BUSY:20261124T090000Z/20261124T100000Z\r\n",
                           "FREEBUSY;FBTYPE=BUSY-TENTATIVE:20261124T020000Z/20261124T040000Z\r\n"})
    EXPECT_NE(text.find(line), std::string::npos) << text;
  EXPECT_EQ(text.find("T060000Z"), std::string::npos);
}

TEST(PropertyFilters, LookForTextOfOneEvent) {
  const Reader reader;
  const std::string text = EventText("DTSTART:20261201T080000 SUMMARY:Caf\\,E LOCATION:Here");
  const auto matches = [&](const PropertyFilter& filter) { return reader.Texts.Matches(text, {{filter}}); };
  EXPECT_TRUE(matches({"summary", false, "f,e"}));
  EXPECT_FALSE(matches({"SUMMARY", false, "f,e", false, true}));
  EXPECT_FALSE(matches({"SUMMARY", false, "f,e", true}));
  EXPECT_FALSE(matches({"URL", false, "x", true}));
  EXPECT_TRUE(matches({"URL", true}));
  EXPECT_TRUE(matches({"LOCATION"}));
}

}  // namespace
}  // namespace orlune
