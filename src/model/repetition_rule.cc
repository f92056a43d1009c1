#include "model/repetition_rule.h"

#include <algorithm>
#include <optional>

#include "base/dates.h"
#include "base/lists.h"
#include "base/text.h"

namespace orlune {

using std::chrono::days;
using std::chrono::year_month_day;

namespace {

/// Where every day belongs to the weekend.
constexpr int kMostMoves = 7;

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
      return MonthDayMatches(date);
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

bool RepetitionRule::MonthDayMatches(Date date) const {
  if (weekends_ == WeekendRule::kKeep) return IsMonthDay(date);
  if (weekends_ == WeekendRule::kSkip) return !week_->IsWeekend(date) && IsMonthDay(date);
  // Only the days of the weekend next to `date`, and itself, can have moved to it.
  const days step = Step();
  Date nominal = date;
  for (int moves = 0; moves <= kMostMoves; ++moves, nominal -= step) {
    if (moves > 0 && !week_->IsWeekend(nominal)) return false;
    if (IsMonthDay(nominal) && MovedOffWeekend(nominal) == date) return true;
  }
  return false;
}

bool RepetitionRule::IsMonthDay(Date date) const {
  const int day = DayOfMonth(date);
  const bool isLast = DayOfMonth(date + days{1}) == 1;
  return std::any_of(monthDays_.begin(), monthDays_.end(), [&](int dayNumber) {
    return dayNumber == day || (isLast && (dayNumber < 1 || dayNumber > day));
  });
}

days RepetitionRule::Step() const {
  return days{weekends_ == WeekendRule::kMoveForward ? 1 : -1};
}

Date RepetitionRule::MovedOffWeekend(Date date) const {
  const days step = Step();
  for (int moves = 0; moves < kMostMoves && week_->IsWeekend(date); ++moves) date += step;
  return date;
}

bool OccursOn(Date date, const OL_Event& event, const Week& week) {
  return RepetitionRule(event, week).OccursOn(date);
}

}  // namespace orlune
