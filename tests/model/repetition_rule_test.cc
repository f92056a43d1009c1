#include "model/repetition_rule.h"

#include <gtest/gtest.h>

#include "base/dates.h"
#include "model/occurrence_dates.h"

namespace orlune {
namespace {

using std::chrono::days;

Date Day(const char* iso) {
  int year = 0;
  int month = 0;
  int day = 0;
  EXPECT_EQ(std::sscanf(iso, "%d-%d-%d", &year, &month, &day), 3) << iso;  // NOLINT(cert-err34-c)
  return std::chrono::year{year} / month / day;
}

/// The days from `first` to `last` on which `event` occurs, as "3-15 3-22".
std::string Occurrences(const OL_Event& event, const Week& week, const char* first, const char* last) {
  const RepetitionRule rule(event, week);
  std::string found;
  for (Date day = Day(first); day <= Day(last); day += days{1}) {
    if (!rule.OccursOn(day)) continue;
    const std::chrono::year_month_day date{day};
    if (!found.empty()) found += ' ';
    found += std::to_string(static_cast<unsigned>(date.month())) + "-" + std::to_string(DayOfMonth(day));
  }
  return found;
}

OL_Event WeekdayEvent(const char* weekdays, const char* frequency, const char* begin) {
  OL_Event event;
  event.Type = Repetition::kByWeekday;
  event.RepeatWeekday = weekdays;
  event.RepeatFrequency = FrequencyOf(frequency);
  event.BeginDate = Day(begin);
  return event;
}

OL_Event DayEvent(const char* type, const char* monthDays, const char* weekends, const char* begin) {
  OL_Event event;
  event.Type = RepetitionOf(type).value();
  event.RepeatDay = monthDays;
  event.RepeatWeekends = WeekendRuleOf(weekends).value_or(WeekendRule::kKeep);
  event.BeginDate = Day(begin);
  return event;
}

TEST(WeekdayRule, CountsWeeksFromTheStart) {
  struct Case {
    const char* Weekdays;
    const char* Frequency;
    const char* Begin;
    const char* Last;
    const char* Expected;
  };
  const std::vector<Case> cases{
      {"2, 4", "vko_1", "2004-03-01", "2004-03-12", "3-1 3-3 3-8 3-10"},
      // Every second Tuesday from a Thursday on begins with the next Tuesday.
      {"3", "vko_2", "2004-03-04", "2004-04-10", "3-9 3-23 4-6"},
      {"3, 5", "vko_3", "2004-03-04", "2004-04-10", "3-4 3-9 3-25 3-30"},
      {"1", "vko_2", "2004-02-29", "2004-03-28", "2-29 3-14 3-28"},
      {"6", "kk_1", "2004-01-01", "2004-04-30", "1-2 2-6 3-5 4-2"},
      {"5", "kk_4", "2004-01-01", "2004-03-31", "1-22 2-26 3-25"},
      {"5", "kk_5", "2004-01-01", "2004-03-31", ""},
      {"5", "vko_4", "2004-01-01", "2004-03-31", ""},
      {"5", "", "2004-01-01", "2004-03-31", ""},
      {"", "vko_1", "2004-01-01", "2004-03-31", ""},
  };
  for (const Case& c : cases) {
    for (const int firstDayOfWeek : {1, 2, 7}) {
      EXPECT_EQ(Occurrences(WeekdayEvent(c.Weekdays, c.Frequency, c.Begin), Week(firstDayOfWeek, "1, 7"),
                            c.Begin, c.Last),
                c.Expected)
          << c.Weekdays << " " << c.Frequency << " from " << c.Begin;
    }
  }
}

TEST(MonthlyRule, MovesWeekendDaysAcrossMonthEnds) {
  struct Case {
    const char* Days;
    const char* Weekends;
    const char* Weekend;
    const char* First;
    const char* Last;
    const char* Expected;
  };
  const std::vector<Case> cases{
      {"31", "vkl_ok", "1, 7", "2003-01-01", "2003-05-31", "1-31 2-28 3-31 4-30 5-31"},
      {"31", "", "1, 7", "2004-02-01", "2004-02-29", "2-29"},
      // 15 May 2004 is a Saturday, 15 August a Sunday.
      {"15", "vkl_ok", "1, 7", "2004-05-01", "2004-05-31", "5-15"},
      {"15", "vkl_no", "1, 7", "2004-05-01", "2004-05-31", ""},
      {"15", "vkl_ma", "1, 7", "2004-05-01", "2004-08-31", "5-17 6-15 7-15 8-16"},
      {"15", "vkl_pe", "1, 7", "2004-05-01", "2004-08-31", "5-14 6-15 7-15 8-13"},
      // 1 May 2004 is a Saturday, 1 August a Sunday; both move into the month before.
      {"1", "vkl_pe", "1, 7", "2004-04-02", "2004-05-31", "4-30"},
      {"1", "vkl_pe", "1, 7", "2004-07-02", "2004-08-31", "7-30"},
      // 31 July 2004 is a Saturday and moves into August.
      {"31", "vkl_ma", "1, 7", "2004-07-01", "2004-08-30", "8-2"},
      // Friday and Saturday as the weekend.
      {"15", "vkl_ma", "6, 7", "2004-05-01", "2004-05-31", "5-16"},
      {"15", "vkl_pe", "6, 7", "2004-05-01", "2004-05-31", "5-13"},
      // Without working days an occurrence moves by at most a week.
      {"15", "vkl_ma", "1, 2, 3, 4, 5, 6, 7", "2004-05-01", "2004-05-31", "5-22"},
      {"1, 15", "vkl_ok", "1, 7", "2004-03-01", "2004-03-31", "3-1 3-15"},
      {"", "vkl_ok", "1, 7", "2004-03-01", "2004-03-31", ""},
      {"x", "vkl_ok", "1, 7", "2004-03-01", "2004-03-31", ""},
  };
  for (const Case& c : cases) {
    for (const int firstDayOfWeek : {1, 2, 7}) {
      EXPECT_EQ(Occurrences(DayEvent("month", c.Days, c.Weekends, "2003-01-01"),
                            Week(firstDayOfWeek, c.Weekend), c.First, c.Last),
                c.Expected)
          << c.Days << " " << c.Weekends << " weekend " << c.Weekend << " " << c.First;
    }
  }
}

TEST(YearlyRule, StaysInItsMonth) {
  const Week week(2, "1, 7");
  EXPECT_EQ(Occurrences(DayEvent("year", "", "vkl_ok", "2000-02-29"), week, "2003-01-01", "2004-12-31"),
            "2-28 2-29");
  // 1 May 2004 is a Saturday: moved back it leaves May and is not shown.
  EXPECT_EQ(Occurrences(DayEvent("year", "", "vkl_pe", "2000-05-01"), week, "2004-01-01", "2004-12-31"), "");
  // The 29th stands in for 31 February 2004; a Sunday, it moves to 1 March, besides 31 March itself.
  EXPECT_EQ(Occurrences(DayEvent("year", "", "vkl_ma", "2000-03-31"), week, "2004-01-01", "2004-12-31"),
            "3-1 3-31");
  EXPECT_EQ(Occurrences(DayEvent("day", "", "", "2000-03-31"), week, "2004-01-01", "2004-12-31"), "");
}

TEST(OccurrenceDates, AreThoseOfTheRule) {
  const Week week(2, "1, 7");
  OL_Event event;
  event.BeginDate = Day("2003-12-31");
  event.EndDate = Day("2010-01-31");
  event.RepeatWeekday = "1, 4";
  event.RepeatFrequency = Frequency::kEvery3Weeks;
  event.RepeatDay = "31";
  for (const char* type : {"weekday", "month", "year"}) {
    for (const char* weekends : {"vkl_ok", "vkl_no", "vkl_ma", "vkl_pe"}) {
      event.Type = RepetitionOf(type).value();
      event.RepeatWeekends = WeekendRuleOf(weekends).value_or(WeekendRule::kKeep);
      std::vector<Date> expected;
      for (Date date = event.BeginDate; date <= event.EndDate; date += std::chrono::days{1}) {
        if (OccursOn(date, event, week)) expected.push_back(date);
      }
      ASSERT_FALSE(expected.empty());
      EXPECT_EQ(OccurrenceDates(event, week, 1000), expected) << type << weekends;
      expected.resize(2);
      EXPECT_EQ(OccurrenceDates(event, week, 2), expected) << type << weekends;
    }
  }
}

}  // namespace
}  // namespace orlune
