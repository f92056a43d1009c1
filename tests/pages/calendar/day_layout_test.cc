#include "pages/calendar/day_layout.h"

#include <gtest/gtest.h>

namespace orlune {
namespace {

/// An event at times such as 930 and 1045; -1 for no time.
OL_Event Timed(int begin, int end) {
  const auto time = [](int clock) -> std::optional<TimeOfDay> {
    if (clock < 0) return std::nullopt;
    return std::chrono::hours{clock / 100} + std::chrono::minutes{clock % 100};
  };
  OL_Event event;
  event.BeginTime = time(begin);
  event.EndTime = time(end);
  return event;
}

TEST(DayLayout, GivesEachEventItsRowAndSpan) {
  struct Case {
    int Begin;
    int End;
    int Row;   // -1: in no row
    int Span;  // with the first displayed hour 8
    const char* Occupied;
  };
  const std::vector<Case> cases{
      {900, 1100, 9, 2, "9 10"}, {930, 1015, 9, 1, "9"},    {900, 945, 9, 0, "9"}, {900, -1, 9, 1, "9"},
      {600, 1000, 8, 2, "8 9"},  {600, 800, -1, 0, ""},     {600, -1, -1, 0, ""},  {1800, 1900, -1, 0, ""},
      {-1, -1, -1, 0, ""},       {1000, 900, 10, -1, "10"}, {815, 830, 8, 0, "8"}, {1700, 2000, 17, 3, "17"},
  };
  for (const Case& c : cases) {
    const OL_Event event = Timed(c.Begin, c.End);
    std::string occupied;
    for (int hour = 8; hour <= 17; ++hour) {
      const auto span = SpanInRow(event, hour, 8);
      EXPECT_EQ(span.has_value(), hour == c.Row) << c.Begin << "-" << c.End << " at " << hour;
      EXPECT_EQ(span.value_or(c.Span), c.Span) << c.Begin << "-" << c.End;
      if (Occupies(event, hour)) occupied += (occupied.empty() ? "" : " ") + std::to_string(hour);
    }
    EXPECT_EQ(occupied, c.Occupied) << c.Begin << "-" << c.End;
  }
}

TEST(DayLayout, NeedsAsManyColumnsAsTheBusiestHour) {
  const OL_Event first = Timed(900, 1100);
  const OL_Event second = Timed(1000, 1200);
  const OL_Event third = Timed(1130, -1);
  const OL_Event early = Timed(600, 700);
  const std::vector<Occurrence> day{{&first, {}, 0}, {&second, {}, 0}, {&third, {}, 0}, {&early, {}, 0}};
  EXPECT_EQ(ColumnCount(day, {8, 17}), 2);
  EXPECT_EQ(ColumnCount(day, {6, 7}), 1);
  EXPECT_EQ(ColumnCount(day, {17, 8}), 1);
  EXPECT_EQ(ColumnCount({}, {8, 17}), 1);
}

TEST(ColumnTable, FillsFromTheLeftAndGrowsWhenItMust) {
  using Runs = std::vector<int>;
  ColumnTable columns(4);
  EXPECT_EQ(columns.FreeRuns(), Runs{4});
  columns.Allocate(1);
  columns.Allocate(2);
  EXPECT_EQ(columns.FreeRuns(), Runs{2});
  columns.EndRow();
  EXPECT_EQ(columns.FreeRuns(), (Runs{1, 2}));
  columns.Allocate(0);
  columns.Allocate(-1);
  EXPECT_EQ(columns.FreeRuns(), (Runs{1, 2})) << "an event without rows leaves its column free";
  for (int i = 0; i < 3; ++i) columns.Allocate(5);
  EXPECT_EQ(columns.FreeRuns(), Runs{});
  columns.Allocate(1);
  columns.EndRow();
  EXPECT_EQ(columns.FreeRuns(), (Runs{1, 1})) << "the second column and the added one";
}

}  // namespace
}  // namespace orlune
