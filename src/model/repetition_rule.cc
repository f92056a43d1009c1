#include "model/repetition_rule.h"

#include <algorithm>
#include <optional>

#include "base/dates.h"
#include "base/lists.h"
#include "base/text.h"

namespace orlune {

using std::chrono::days;
using std::chrono::months;
using std::chrono::year_month_day;

namespace {

/// The number that ends a frequency such as "vko_2", when it is `prefix` and one of 1 to `most`; else 0.
int FrequencyNumber(std::string_view frequency, std::string_view prefix, int most) {
  if (!frequency.starts_with(prefix)) return 0;
  const int number = WholeNumber(frequency.substr(prefix.size())).value_or(0);
  return number >= 1 && number <= most ? number : 0;
}

/// Day `dayNumber` of the month of `inMonth`, or that month's last day where it has no such day.
Date DayOfItsMonth(Date inMonth, int dayNumber) {
  const Date day = inMonth + days{dayNumber - DayOfMonth(inMonth)};
  const Date lastDay = LastDayOfMonth(inMonth);
  return dayNumber < 1 || day > lastDay ? lastDay : day;
}

/// `AddMonths` without its limits, so that the months around the first and the last date exist.
Date NeighbourMonth(Date date, int offset) {
  const year_month_day parts{date};
  const auto month = parts.year() / parts.month() + months{offset};
  return LastDayOfMonth(Date{month / 1});
}

}  // namespace

RepetitionRule::RepetitionRule(const OL_Event& event, const Week& week)
    : week_(&week), begin_(event.BeginDate) {
  if (event.RepeatWeekends == "vkl_no") weekends_ = Weekends::kSkip;
  if (event.RepeatWeekends == "vkl_ma") weekends_ = Weekends::kMoveForward;
  if (event.RepeatWeekends == "vkl_pe") weekends_ = Weekends::kMoveBack;

  if (event.Type == "weekday") {
    ReadWeekdayRule(event);
  } else if (event.Type == "month") {
    kind_ = Kind::kMonthly;
    ForEachItem(event.RepeatDay, [&](std::string_view item) {
      if (const auto number = WholeNumber(item)) monthDays_.push_back(*number);
    });
  } else if (event.Type == "year") {
    kind_ = Kind::kYearly;
    monthDays_.push_back(DayOfMonth(begin_));
  }
}

void RepetitionRule::ReadWeekdayRule(const OL_Event& event) {
  if (const int weeks = FrequencyNumber(event.RepeatFrequency, "vko_", 3)) {
    kind_ = Kind::kEveryNWeeks;
    number_ = weeks;
  } else if (const int nth = FrequencyNumber(event.RepeatFrequency, "kk_", 4)) {
    kind_ = Kind::kNthInMonth;
    number_ = nth;
  }
  ForEachItem(event.RepeatWeekday, [&](std::string_view item) {
    if (item.size() == 1 && item[0] >= '1' && item[0] <= '7')
      onWeekday_[static_cast<std::size_t>(item[0] - '0')] = true;
  });
}

bool RepetitionRule::OccursOn(Date date) const {
  const auto matchesMonthDay = [&](int dayNumber) { return MonthDayMatches(dayNumber, date); };
  switch (kind_) {
    case Kind::kNever:
      return false;
    case Kind::kEveryNWeeks:
      return onWeekday_[static_cast<std::size_t>(WeekdayNumber(date))] && WeekFrequencyMatches(date);
    case Kind::kNthInMonth:
      return onWeekday_[static_cast<std::size_t>(WeekdayNumber(date))] && WeekOfMonthMatches(date);
    case Kind::kYearly:
      if (year_month_day{date}.month() != year_month_day{begin_}.month()) return false;
      [[fallthrough]];
    case Kind::kMonthly:
      return std::any_of(monthDays_.begin(), monthDays_.end(), matchesMonthDay);
  }
  return false;
}

bool RepetitionRule::WeekFrequencyMatches(Date date) const {
  const int daysToFirst = (WeekdayNumber(date) - WeekdayNumber(begin_) + 7) % 7;
  const Date first = begin_ + days{daysToFirst};
  return (date - first) % std::chrono::weeks{number_} == days{0};
}

bool RepetitionRule::WeekOfMonthMatches(Date date) const {
  return (DayOfMonth(date) - 1) / 7 + 1 == number_;
}

bool RepetitionRule::MonthDayMatches(int dayNumber, Date date) const {
  if (weekends_ == Weekends::kSkip && week_->IsWeekend(date)) return false;
  for (const int offset : {-1, 0, 1}) {
    const Date nominal = DayOfItsMonth(NeighbourMonth(date, offset), dayNumber);
    if (MovedOffWeekend(nominal) == date) return true;
  }
  return false;
}

Date RepetitionRule::MovedOffWeekend(Date date) const {
  if (weekends_ != Weekends::kMoveForward && weekends_ != Weekends::kMoveBack) return date;
  const days step{weekends_ == Weekends::kMoveForward ? 1 : -1};
  for (int moves = 0; moves < 7 && week_->IsWeekend(date); ++moves) date += step;
  return date;
}

bool OccursOn(Date date, const OL_Event& event, const Week& week) {
  return RepetitionRule(event, week).OccursOn(date);
}

}  // namespace orlune
