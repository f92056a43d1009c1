#include "base/dates.h"

#include <gtest/gtest.h>

#include "base/date_text.h"
#include "base/week.h"
#include "drivers/icu/icu_regional_settings.h"

namespace orlune {
namespace {

using std::chrono::days;
using std::chrono::year_month_day;

Date Day(int year, unsigned month, unsigned day) {
  return std::chrono::year{year} / static_cast<int>(month) / static_cast<int>(day);
}

TEST(ParseDate, ParsesTheFormatsOfEachRegionAndNothingElse) {
  struct Case {
    const char* Region;
    const char* Text;
    std::optional<Date> Expected;
  };
  const Date ides = Day(2004, 3, 15);
  const std::vector<Case> cases{
      {"en_US", "3/15/2004", ides},
      {"en_US", " 03-15-04 ", ides},
      {"en_US", "3.15.2004", ides},
      {"en_US", "2004-3-15", ides},
      {"en_US", "15/3/2004", std::nullopt},
      {"en_US", "2004/3/15", std::nullopt},
      {"en_US", "3/15-2004", std::nullopt},
      {"en_US", "3/15", std::nullopt},
      {"en_US", "3/15/2004 10:00", std::nullopt},
      {"en_US", "2/29/1900", std::nullopt},
      {"en_US", "2/29/2000", Day(2000, 2, 29)},
      {"en_US", "1/1/29", Day(2029, 1, 1)},
      {"en_US", "1/1/30", Day(1930, 1, 1)},
      {"en_US", "1/1/0099", std::nullopt},
      {"en_US", "1/1/0100", Day(100, 1, 1)},
      {"en_US", "1/1/200", std::nullopt},
      {"en_US", "0/1/2004", std::nullopt},
      {"en_US", "003/15/2004", std::nullopt},
      {"en_US", "+3/15/2004", std::nullopt},
      {"en_US", "", std::nullopt},
      {"en_US", " ", std::nullopt},
      {"en_GB", "15/03/2004", ides},
      {"en_GB", "3/15/2004", std::nullopt},
      {"fi_FI", "15.3.2004", ides},
      {"fi_FI", "2004-03-15", ides},
      {"fi_FI", "15.3.", std::nullopt},
      {"sv_SE", "2004-03-15", ides},
      {"sv_SE", "04/03/15", ides},
      {"sv_SE", "15/3/2004", std::nullopt},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(ParseDate(LoadRegionalSettings(c.Region), c.Text), c.Expected) << c.Region << " " << c.Text;
  }
}

TEST(ParseDate, ReadsBackEveryFormattedDate) {
  for (const char* region : {"en_US", "en_GB", "fi_FI", "sv_SE", "de_DE", "hu_HU", "ja_JP", "ar_EG"}) {
    const RegionalSettings regional = LoadRegionalSettings(region);
    for (Date date = kFirstDate; date <= kLastDate; date += days{1009}) {
      const std::string text = FormatShortDate(regional, date);
      ASSERT_EQ(ParseDate(regional, text), date) << region << " " << text;
    }
  }
}

TEST(ParseTime, ReadsBothClocks) {
  struct Case {
    const char* Text;
    int Minutes;  // -1: no time
  };
  const std::vector<Case> cases{{"9:05", 545},     {"09:05", 545},  {"23:59:00", 1439}, {"12:00 AM", 0},
                                {"12:30 pm", 750}, {"1:15PM", 795}, {"24:00", -1},      {"13:00 PM", -1},
                                {"0:30 AM", -1},   {"9", -1},       {"9:5", -1},        {"9:60", -1},
                                {"- - - -", -1},   {"", -1},        {"9:05 XM", -1},    {"9:05:1", -1}};
  for (const Case& c : cases) {
    const auto time = ParseTime(c.Text);
    EXPECT_EQ(time ? std::chrono::floor<std::chrono::minutes>(*time).count() : -1, c.Minutes) << c.Text;
  }
}

TEST(FormatTime, ReadsBackEveryQuarterOfADay) {
  for (const char* format : {"Hh:Nn", "Hh:Nn AM/PM"}) {
    for (std::chrono::minutes time{0}; time < std::chrono::hours{24}; time += std::chrono::minutes{15}) {
      ASSERT_EQ(ParseTime(FormatTime(format, time)), time) << FormatTime(format, time);
    }
  }
  EXPECT_EQ(FormatTime("Hh:Nn AM/PM", std::chrono::minutes{870}), "02:30 PM");
  EXPECT_EQ(FormatTime("Hh:Nn AM/PM", std::chrono::minutes{0}), "12:00 AM");
}

TEST(LongDate, InflectsMonthsAsTheRegionDoes) {
  struct Case {
    const char* Region;
    const char* Long;
    const char* UpperLong;
    const char* UpperMonth;
  };
  const std::vector<Case> cases{
      {"en_US", "Monday, March 15, 2004", "MONDAY, MARCH 15, 2004", "MARCH 2004"},
      {"fi_FI", "maanantai 15. maaliskuuta 2004", "MAANANTAI 15. MAALISKUUTA 2004", "MAALISKUU 2004"},
      {"sv_SE", "måndag 15 mars 2004", "MÅNDAG 15 MARS 2004", "MARS 2004"},
  };
  const Date ides = Day(2004, 3, 15);
  for (const Case& c : cases) {
    const RegionalSettings regional = LoadRegionalSettings(c.Region);
    EXPECT_EQ(FormatLongDate(regional.Names, ides), c.Long);
    EXPECT_EQ(FormatLongDate(regional.UpperCaseNames, ides), c.UpperLong);
    EXPECT_EQ(FormatMonthAndYear(regional.UpperCaseNames, ides), c.UpperMonth);
  }
}

TEST(DateArithmetic, ClampsToShorterMonthsAndToTheKnownRange) {
  EXPECT_EQ(AddMonths(Day(2004, 1, 31), 1), Day(2004, 2, 29));
  EXPECT_EQ(AddMonths(Day(2004, 1, 31), -1), Day(2003, 12, 31));
  EXPECT_EQ(AddMonths(Day(9999, 12, 5), 1), kLastDate);
  EXPECT_EQ(AddMonths(Day(100, 1, 5), -1), kFirstDate);
  EXPECT_EQ(AddDays(kLastDate, 7), kLastDate);
  EXPECT_EQ(LastDayOfMonth(Day(2004, 1, 31)), Day(2004, 1, 31));
  EXPECT_EQ(LastDayOfMonth(Day(1900, 2, 15)), Day(1900, 2, 28));
  EXPECT_EQ(DaysInMonth(2, 2000), 29);
  EXPECT_FALSE(IsLeapYear(1900));
}

TEST(Week, NumbersMondayWeeksAsIso8601) {
  struct Case {
    Date Day;
    int Monday;
    int Sunday;
  };
  const std::vector<Case> cases{
      {Day(2021, 1, 1), 53, 53},   {Day(2021, 1, 3), 53, 1},   {Day(2021, 1, 4), 1, 1},
      {Day(2024, 12, 31), 1, 1},   {Day(2004, 3, 14), 11, 11}, {Day(2004, 3, 15), 12, 11},
      {Day(2009, 12, 31), 53, 52}, {Day(2010, 1, 3), 53, 1},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Week(2, "").WeekNumber(c.Day), c.Monday) << year_month_day{c.Day}.day().operator unsigned();
    EXPECT_EQ(Week(1, "").WeekNumber(c.Day), c.Sunday) << year_month_day{c.Day}.day().operator unsigned();
  }
}

TEST(Week, NumberStepsByOneFromWeekToWeek) {
  for (int firstDay = 1; firstDay <= 7; ++firstDay) {
    const Week week(firstDay, "1, 7");
    int previous = week.WeekNumber(week.Start(Day(1995, 1, 1)));
    for (Date start = week.Start(Day(1995, 1, 1)) + days{7}; start < Day(2035, 1, 1); start += days{7}) {
      const int number = week.WeekNumber(start);
      ASSERT_TRUE(number == previous + 1 || (number == 1 && previous >= 52))
          << firstDay << ": " << previous << ", " << number;
      ASSERT_EQ(week.WeekNumber(start + days{6}), number);
      previous = number;
    }
  }
}

TEST(Week, KnowsItsWeekendWhateverDayItBeginsOn) {
  EXPECT_EQ(Week(2, "1, 7").WeekendPositions(), "7, 6");
  EXPECT_EQ(Week(1, "1, 7").WeekendPositions(), "1, 7");
  EXPECT_EQ(Week(2, "").WeekendPositions(), "");
  const Date saturday = Day(2004, 3, 13);
  for (int firstDay = 1; firstDay <= 7; ++firstDay) {
    const Week week(firstDay, "6, 7");
    EXPECT_TRUE(week.IsWeekend(saturday - days{1}));
    EXPECT_TRUE(week.IsWeekend(saturday));
    EXPECT_FALSE(week.IsWeekend(saturday + days{1}));
  }
}

}  // namespace
}  // namespace orlune
