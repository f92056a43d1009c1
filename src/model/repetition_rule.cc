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

/// Day `dayNumber` of the month of `inMonth`, or its last day when it has no such day.
Date DayOfItsMonth(Date inMonth, int dayNumber) {
  const Date day = inMonth + days{dayNumber - DayOfMonth(inMonth)};
  const Date lastDay = LastDayOfMonth(inMonth);
  return dayNumber < 1 || day > lastDay ? lastDay : day;
}

/// `AddMonths` without clamping: the months next to the first and the last supported date are needed.
Date NeighbourMonth(Date date, int offset) {
  const year_month_day parts{date};
  const auto month = parts.year() / parts.month() + months{offset};
  return LastDayOfMonth(Date{month / 1});
}

}  // namespace

RepetitionRule::RepetitionRule(const OL_Event& event, const Week& week)
    : week_(&week), weekends_(event.RepeatWeekends), begin_(event.BeginDate) {
  if (event.Type == Repetition::kByWeekday) {
    ReadWeekdayRule(event);
  } else if (event.Type == Repetition::kMonthly) {
    kind_ = Kind::kMonthly;
    ForEachItem(event.RepeatDay, [&](std::string_view item) {
      if (const auto number = WholeNumber(item)) monthDays_.push_back(*number);
    });
  } else if (event.Type == Repetition::kYearly) {
    kind_ = Kind::kYearly;
    monthDays_.push_back(DayOfMonth(begin_));
  }
}

void RepetitionRule::ReadWeekdayRule(const OL_Event& event) {
  if (!event.RepeatFrequency) return;
  const bool isOnceInMonth = *event.RepeatFrequency >= Frequency::kFirstInMonth;
  kind_ = isOnceInMonth ? Kind::kNthInMonth : Kind::kEveryNWeeks;
  const Frequency one = isOnceInMonth ? Frequency::kFirstInMonth : Frequency::kEveryWeek;
  number_ = 1 + static_cast<int>(*event.RepeatFrequency) - static_cast<int>(one);
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
  if (weekends_ == WeekendRule::kSkip && week_->IsWeekend(date)) return false;
  for (const int offset : {-1, 0, 1}) {
    const Date nominal = DayOfItsMonth(NeighbourMonth(date, offset), dayNumber);
    if (MovedOffWeekend(nominal) == date) return true;
  }
  return false;
}

Date RepetitionRule::MovedOffWeekend(Date date) const {
  if (weekends_ != WeekendRule::kMoveForward && weekends_ != WeekendRule::kMoveBack) return date;
  const days step{weekends_ == WeekendRule::kMoveForward ? 1 : -1};
  for (int moves = 0; moves < 7 && week_->IsWeekend(date); ++moves) date += step;
  return date;
}

bool OccursOn(Date date, const OL_Event& event, const Week& week) {
  return RepetitionRule(event, week).OccursOn(date);
}

}  // namespace orlune
