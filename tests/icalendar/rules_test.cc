#include <algorithm>
#include <array>
#include <iterator>
#include <random>

#include <gtest/gtest.h>

#include "base/lists.h"
#include "exchange/row_text.h"
#include "icalendar/libical_days.h"
#include "icalendar/reader.h"
#include "model/occurrence_dates.h"

namespace orlune {
namespace {

using std::chrono::days;
using std::chrono::hours;

constexpr Date kFirst = std::chrono::year{2023} / 1 / 1;
constexpr std::array kWeekends{
    "1, 7", "6, 7", "1", "", "1, 4", "5, 6, 7", "1, 2, 3, 4, 5, 6", "1, 2, 3, 4, 5, 6, 7"};

/// Random rows of every kind.
class RandomRows {
 public:
  explicit RandomRows(unsigned seed) : random_(seed) {}

  ObjectEvent Next() {
    ObjectEvent row;
    OL_Event& event = row.Event;
    event.EventName = "Title";
    event.Type = static_cast<Repetition>(Number(0, 4));
    event.BeginDate = kFirst + days{Number(0, 800)};
    event.EndDate =
        event.Type == Repetition::kNone ? event.BeginDate : event.BeginDate + days{Number(0, 1500)};
    if (Number(0, 3) > 0) event.BeginTime = std::chrono::minutes{Number(0, 1439)};
    if (event.BeginTime && Number(0, 1) == 0)
      event.EndTime = std::min(*event.BeginTime + hours{1}, TimeOfDay{86'340});
    event.RepeatFrequency = static_cast<Frequency>(Number(0, 6));
    event.RepeatWeekday = Numbers(1, 7, 3);
    event.RepeatDay = Number(0, 3) == 0 ? Numbers(0, 33, 1) : Numbers(1, 31, Number(1, 3));
    event.RepeatWeekends = static_cast<WeekendRule>(Number(0, 3));
    return row;
  }

  /// Leaves out some of its days.
  void LeaveOut(ObjectEvent& row, const Week& week) {
    if (row.Event.Type == Repetition::kNone) return;
    for (const Date day : OccurrenceDates(row.Event, week, 400)) {
      if (Number(0, 9) == 0) row.Days.LeftOut.push_back(day);
    }
  }

  int Number(int least, int most) { return std::uniform_int_distribution(least, most)(random_); }

 private:
  std::string Numbers(int least, int most, int count) {
    std::vector<std::string> numbers;
    for (int i = 0; i < count; ++i) numbers.push_back(std::to_string(Number(least, most)));
    return JoinList(numbers);
  }

  std::mt19937 random_;
};

std::set<Date> DaysOfRow(const ObjectEvent& row, const Week& week) {
  if (row.Event.Type == Repetition::kListed) return {row.Days.Listed.begin(), row.Days.Listed.end()};
  std::set<Date> left;
  for (const Date day : OccurrenceDates(row.Event, week, 5000)) {
    if (!std::ranges::binary_search(row.Days.LeftOut, day)) left.insert(day);
  }
  return left;
}

std::set<Date> DaysOfRows(const std::vector<ObjectEvent>& rows, const Week& week) {
  std::set<Date> all;
  for (const ObjectEvent& row : rows) all.merge(DaysOfRow(row, week));
  return all;
}

bool IsSpan(const ObjectEvent& row) {
  return row.Event.Type == Repetition::kDaily && !row.Event.BeginTime && row.Days.LeftOut.empty();
}

TEST(RulesOfRows, HaveTheDaysOfTheirRowsInOtherProgramsAndWhenReadAgain) {
  constexpr std::array kZones{"UTC", "Europe/Helsinki", "America/New_York"};
  RandomRows rows(20'261'124);
  for (int i = 0; i < 1500; ++i) {
    const auto number = static_cast<std::size_t>(i);
    const Reader reader(kZones[number % kZones.size()], kWeekends[number % kWeekends.size()]);
    ObjectEvent row = rows.Next();
    if (i % 4 == 0) rows.LeaveOut(row, reader.Week);
    const std::set<Date> expected = DaysOfRow(row, reader.Week);
    const std::string text = reader.Texts.ObjectText({0, "1.ics", "1@x", "", false, {row}}, reader.Week);
    ASSERT_EQ(text.empty(), expected.empty()) << i << text;
    if (text.empty()) continue;
    std::set<Date> found = LibicalDays(text, kFirst + days{2500});
    if (IsSpan(row)) found = expected;
    ASSERT_EQ(found, expected) << i << " weekend " << kWeekends[number % kWeekends.size()] << "\n" << text;

    const PlannedObject read = reader.Read(text, kFirst);
    ASSERT_EQ(DaysOfRows(read.Events, reader.Week), expected) << i << "\n" << text;
    ASSERT_EQ(read.Events.size(), 1U) << i << "\n" << text;
    const OL_Event& event = read.Events.front().Event;
    EXPECT_EQ(event.BeginTime, row.Event.BeginTime) << text;
    EXPECT_EQ(event.EndTime, row.Event.EndTime) << text;
    if (text.find("RRULE", text.find("VEVENT")) != std::string::npos) {
      EXPECT_NE(event.Type, Repetition::kListed) << i << "\n" << text;
    }
  }
}

struct Example {
  const char* Name;
  const char* Lines;
  Repetition Type;
  std::size_t Rows = 1;
  const char* Begin = "19970902";
};

// The examples of RFC 5545, section 3.8.5.3, but for those that occur several times a day.
TEST(RulesOfRfc, OccurOnTheDaysThatLibicalFinds) {
  const Example examples[] = {
      {"ten days", "RRULE:FREQ=DAILY;COUNT=10", Repetition::kDaily},
      {"daily until", "RRULE:FREQ=DAILY;UNTIL=19971224T000000Z", Repetition::kDaily},
      {"every other day", "RRULE:FREQ=DAILY;INTERVAL=2", Repetition::kListed},
      {"every ten days", "RRULE:FREQ=DAILY;INTERVAL=10;COUNT=5", Repetition::kMonthly},
      {"every day in January",
       "RRULE:FREQ=YEARLY;UNTIL=20000131T140000Z;BYMONTH=1;BYDAY=SU,MO,TU,WE,TH,FR,SA", Repetition::kListed},
      {"ten weeks", "RRULE:FREQ=WEEKLY;COUNT=10", Repetition::kByWeekday},
      {"every other week", "RRULE:FREQ=WEEKLY;INTERVAL=2;WKST=SU", Repetition::kByWeekday},
      {"Tuesday and Thursday", "RRULE:FREQ=WEEKLY;COUNT=10;WKST=SU;BYDAY=TU,TH", Repetition::kByWeekday},
      {"every other week on three days",
       "RRULE:FREQ=WEEKLY;INTERVAL=2;UNTIL=19971224T000000Z;WKST=SU;BYDAY=MO,WE,FR", Repetition::kByWeekday,
       1, "19970901"},
      {"first Friday", "RRULE:FREQ=MONTHLY;COUNT=10;BYDAY=1FR", Repetition::kByWeekday, 1, "19970905"},
      {"first and last Sunday every other month", "RRULE:FREQ=MONTHLY;INTERVAL=2;COUNT=10;BYDAY=1SU,-1SU",
       Repetition::kListed, 1, "19970907"},
      {"second last Monday", "RRULE:FREQ=MONTHLY;COUNT=6;BYDAY=-2MO", Repetition::kListed, 1, "19970922"},
      {"third last day", "RRULE:FREQ=MONTHLY;BYMONTHDAY=-3", Repetition::kListed},
      {"2nd and 15th", "RRULE:FREQ=MONTHLY;COUNT=10;BYMONTHDAY=2,15", Repetition::kMonthly},
      {"first and last day", "RRULE:FREQ=MONTHLY;COUNT=10;BYMONTHDAY=1,-1", Repetition::kMonthly, 1,
       "19970930"},
      {"every 18 months", "RRULE:FREQ=MONTHLY;INTERVAL=18;COUNT=10;BYMONTHDAY=10,11,12,13,14,15",
       Repetition::kListed, 1, "19970910"},
      {"June and July", "RRULE:FREQ=YEARLY;COUNT=10;BYMONTH=6,7", Repetition::kListed, 1, "19970610"},
      {"every third year", "RRULE:FREQ=YEARLY;INTERVAL=3;COUNT=10;BYYEARDAY=1,100,200", Repetition::kListed,
       1, "19970101"},
      {"20th Monday", "RRULE:FREQ=YEARLY;BYDAY=20MO", Repetition::kListed},
      {"Monday of week 20", "RRULE:FREQ=YEARLY;BYWEEKNO=20;BYDAY=MO", Repetition::kListed},
      {"Thursdays of March", "RRULE:FREQ=YEARLY;BYMONTH=3;BYDAY=TH", Repetition::kListed},
      {"Friday the 13th",
       "EXDATE;TZID=America/New_York:19970902T090000 RRULE:FREQ=MONTHLY;BYDAY=FR;BYMONTHDAY=13",
       Repetition::kListed},
      {"election day", "RRULE:FREQ=YEARLY;INTERVAL=4;BYMONTH=11;BYDAY=TU;BYMONTHDAY=2,3,4,5,6,7,8",
       Repetition::kListed},
      {"third of three weekdays", "RRULE:FREQ=MONTHLY;COUNT=3;BYDAY=TU,WE,TH;BYSETPOS=3", Repetition::kListed,
       1, "19970904"},
      {"second last working day", "RRULE:FREQ=MONTHLY;BYDAY=MO,TU,WE,TH,FR;BYSETPOS=-2", Repetition::kListed},
      {"every 20 minutes", "RRULE:FREQ=DAILY;BYHOUR=9,10,11;BYMINUTE=0,20,40", Repetition::kDaily, 9},
      {"weeks from Monday", "RRULE:FREQ=WEEKLY;INTERVAL=2;COUNT=4;BYDAY=TU,SU;WKST=MO",
       Repetition::kByWeekday, 1, "19970805"},
      {"weeks from Sunday", "RRULE:FREQ=WEEKLY;INTERVAL=2;COUNT=4;BYDAY=TU,SU;WKST=SU",
       Repetition::kByWeekday, 1, "19970805"},
      {"no 30 February", "RRULE:FREQ=MONTHLY;BYMONTHDAY=15,30;COUNT=5", Repetition::kListed, 1, "19980115"},
      {"each third", "RRULE:FREQ=DAILY RDATE;TZID=America/New_York:19970902T150000", Repetition::kDaily, 2},
  };
  const Reader reader("America/New_York");
  constexpr Date kBegin = std::chrono::year{1997} / 9 / 2;
  for (const Example& example : examples) {
    SCOPED_TRACE(example.Name);
    const std::string text =
        EventText(std::string("DTSTART;TZID=America/New_York:") + example.Begin + "T090000 " + example.Lines);
    const PlannedObject read = reader.Read(text, kBegin);
    EXPECT_EQ(read.Events.size(), example.Rows);
    EXPECT_EQ(read.Events.front().Event.Type, example.Type);
    const Date last = kBegin + days{5 * 365};
    std::set<Date> found = DaysOfRows(read.Events, reader.Week);
    std::erase_if(found, [last](Date day) { return day > last; });
    EXPECT_EQ(found, LibicalDays(text, last));
  }
}

}  // namespace
}  // namespace orlune
