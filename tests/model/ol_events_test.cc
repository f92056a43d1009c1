#include "model/ol_events.h"

#include <gtest/gtest.h>

#include "base/dates.h"

namespace orlune {
namespace {

using std::chrono::days;

const Week kWeek(2, "1, 7");

Date March(int day) {
  return std::chrono::year{2004} / 3 / day;
}

OL_Event Event(const char* name, const char* type, Date begin, Date end) {
  OL_Event event;
  event.EventName = name;
  event.Type = RepetitionOf(type).value_or(Repetition::kUnknown);
  event.BeginDate = begin;
  event.EndDate = end;
  return event;
}

/// The occurrences of March 2004's days `first` to `last`, as "15 Lunch, 16 Lunch".
std::string List(const std::vector<OL_Event>& rows, int first, int last) {
  OL_Events events;
  events.GetEventsForPeriod(rows, {}, kWeek, March(first), March(last));
  std::string list;
  for (int day = first - 2; day <= last + 2; ++day) {
    for (const Occurrence& occurrence : events.GetEventsForDay(March(day))) {
      EXPECT_EQ(occurrence.OccurrenceDate, March(day));
      list += (list.empty() ? "" : ", ") + std::to_string(day) + " " + occurrence.Event->EventName;
    }
  }
  return list;
}

std::vector<OL_Event> RepeatingEvents() {
  std::vector<OL_Event> events{Event("Trip", "day", March(5), March(17)),
                               Event("Weekly", "weekday", March(3), March(31)),
                               Event("Monthly", "month", March(1), March(31))};
  events[1].RepeatWeekday = "4";
  events[1].RepeatFrequency = Frequency::kEveryWeek;
  events[2].RepeatDay = "13, 14, 31";
  events[2].RepeatWeekends = WeekendRule::kMoveForward;
  return events;
}

TEST(Occurrences, FallOnTheDaysOfThePeriodInTheOrderOfTheEvents) {
  EXPECT_EQ(List(RepeatingEvents(), 15, 17), "15 Trip, 15 Monthly, 16 Trip, 17 Trip, 17 Weekly");
  const std::vector<OL_Event> events{
      Event("Last", "none", March(12), March(1)),  Event("First", "none", March(10), March(10)),
      Event("Before", "none", March(9), March(9)), Event("After", "none", March(13), March(13)),
      Event("Odd", "other", March(1), March(31)),  Event("Trip", "day", March(11), March(20)),
      Event("Over", "day", March(1), March(9)),    Event("Reversed", "day", March(12), March(11)),
  };
  EXPECT_EQ(List(events, 10, 12), "10 First, 11 Trip, 12 Last, 12 Trip");
  EXPECT_EQ(List(events, 21, 21), "");
}

TEST(Occurrences, OfAPeriodAreThoseOfItsHalves) {
  const std::vector<OL_Event> events = RepeatingEvents();
  const std::string whole = List(events, 1, 31);
  for (int middle = 3; middle < 31; ++middle)
    EXPECT_EQ(List(events, 1, middle) + ", " + List(events, middle + 1, 31), whole);
}

TEST(Occurrences, ReachTheEndOfTheKnownDates) {
  OL_Events events;
  EXPECT_TRUE(events.GetEventsForDay(kLastDate).empty());
  events.GetEventsForPeriod({Event("Forever", "day", kLastDate - days{1}, kLastDate)}, {}, kWeek,
                            kLastDate - days{6}, kLastDate);
  EXPECT_EQ(events.GetEventsForDay(kLastDate).size(), 1U);
  EXPECT_EQ(events.GetEventsForDay(kLastDate - days{2}).size(), 0U);
}

}  // namespace
}  // namespace orlune
