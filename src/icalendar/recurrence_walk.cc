#include <algorithm>

#include "base/dates.h"
#include "icalendar/recurrence.h"

namespace orlune {

using std::chrono::days;
using std::chrono::months;
using std::chrono::year_month_day;
using std::chrono::years;

namespace {

int Weekday(Date date) {
  return WeekdayNumber(date) - 1;
}

}  // namespace

Recurrence Recurrence::WithDefaults(const DateTime& begin) const {
  Recurrence rule = *this;
  const year_month_day first{begin.Day};
  const std::chrono::hh_mm_ss time{begin.Time};
  if (rule.hours_.empty()) rule.hours_ = {static_cast<int>(time.hours().count())};
  if (rule.minutes_.empty()) rule.minutes_ = {static_cast<int>(time.minutes().count())};
  if (rule.seconds_.empty()) rule.seconds_ = {static_cast<int>(time.seconds().count())};
  const int monthDay = static_cast<int>(static_cast<unsigned>(first.day()));
  const bool hasNoDay = daysOfWeek_.empty() && monthDays_.empty();
  if (unit_ == Unit::kWeek && daysOfWeek_.empty()) rule.daysOfWeek_ = {{0, Weekday(begin.Day)}};
  if (unit_ == Unit::kMonth && hasNoDay && yearDays_.empty()) rule.monthDays_ = {monthDay};
  if (unit_ == Unit::kYear && hasNoDay && yearDays_.empty()) {
    if (!weekNumbers_.empty()) {
      rule.daysOfWeek_ = {{0, Weekday(begin.Day)}};
    } else {
      rule.monthDays_ = {monthDay};
      if (months_.empty()) rule.months_ = {static_cast<int>(static_cast<unsigned>(first.month()))};
    }
  }
  return rule;
}

Date Recurrence::PeriodStart(Date date) const {
  const year_month_day parts{date};
  switch (*unit_) {
    case Unit::kDay:
      return date;
    case Unit::kWeek:
      return date - days{(Weekday(date) - weekStart_ + 7) % 7};
    case Unit::kMonth:
      return Date{parts.year() / parts.month() / 1};
    case Unit::kYear:
      return Date{parts.year() / 1 / 1};
  }
  return date;
}

std::vector<TimeOfDay> Recurrence::TimesOfDay() const {
  std::vector<TimeOfDay> times;
  for (const int hour : hours_) {
    for (const int minute : minutes_) {
      for (const int second : seconds_)
        times.push_back(std::chrono::hours{hour} + std::chrono::minutes{minute} +
                        std::chrono::seconds{std::min(second, 59)});
    }
  }
  return times;
}

/// Goes through the periods of a rule in order.
class Recurrence::Walk {
 public:
  Walk(const Recurrence& rule, const DateTime& begin, Date last, std::size_t most, WorkBudget& budget)
      : rule_(rule.WithDefaults(begin)),
        begin_(begin),
        last_(rule.until_ ? std::min(last, rule.until_->Day) : last),
        most_(most),
        budget_(budget),
        times_(rule_.TimesOfDay()),
        start_(rule_.PeriodStart(begin.Day)) {}

  Days Run() {
    const bool endsBefore = rule_.until_ && rule_.until_->Day <= last_;
    bool goesOn = true;
    while (goesOn && start_ <= last_) {
      const Date next = Next();
      goesOn = AddPeriod(std::min(next - days{1}, AfterPeriod() - days{1}));
      start_ = next;
    }
    // What ends the rule has been reached, rather than what the caller wants to know.
    found_.IsComplete = isAtCount_ || (goesOn && endsBefore);
    return std::move(found_);
  }

 private:
  Date AfterPeriod() const { return After(1); }
  Date Next() const { return After(rule_.interval_); }
  Date After(int count) const {
    const year_month_day parts{start_};
    switch (*rule_.unit_) {
      case Unit::kDay:
        return start_ + days{count};
      case Unit::kWeek:
        return start_ + days{7 * count};
      case Unit::kMonth:
        return Date{parts + months{count}};
      case Unit::kYear:
        return Date{parts + years{count}};
    }
    return start_;
  }

  /// False when there are enough.
  bool AddPeriod(Date end) {
    periodDays_.clear();
    const bool needsAll = !rule_.positions_.empty();
    const Date first = needsAll ? start_ : std::max(start_, begin_.Day);
    const Date final = needsAll ? end : std::min(end, last_);
    if (first <= final) budget_.Spend(static_cast<std::size_t>((final - first).count()) + 1);
    for (Date date = first; date <= final; date += days{1}) {
      if (rule_.IsDay(date)) periodDays_.push_back(date);
    }
    return needsAll ? AddPositions() : AddAll();
  }

  bool AddAll() {
    for (const Date day : periodDays_) {
      for (const TimeOfDay time : times_) {
        if (!Add({day, time})) return false;
      }
    }
    return true;
  }

  bool AddPositions() {
    const auto size = static_cast<long>(periodDays_.size() * times_.size());
    std::vector<long> indexes;
    for (const int position : rule_.positions_) {
      const long index = position > 0 ? position - 1 : size + position;
      if (index >= 0 && index < size) indexes.push_back(index);
    }
    std::ranges::sort(indexes);
    indexes.erase(std::unique(indexes.begin(), indexes.end()), indexes.end());
    for (const long index : indexes) {
      const auto place = static_cast<std::size_t>(index);
      if (!Add({periodDays_[place / times_.size()], times_[place % times_.size()]})) return false;
    }
    return true;
  }

  bool Add(const DateTime& time) {
    if (Before(time, begin_)) return true;
    if (rule_.until_ && Before(*rule_.until_, time)) return true;
    if (time.Day > last_) return false;
    if (found_.Times.size() == most_) return false;
    budget_.Spend(1);
    found_.Times.push_back(time);
    isAtCount_ = rule_.count_ && found_.Times.size() == *rule_.count_;
    return !isAtCount_;
  }

  static bool Before(const DateTime& a, const DateTime& b) {
    return a.Day != b.Day ? a.Day < b.Day : a.Time < b.Time;
  }

  const Recurrence rule_;
  const DateTime begin_;
  const Date last_;
  const std::size_t most_;
  WorkBudget& budget_;
  const std::vector<TimeOfDay> times_;
  Date start_;
  std::vector<Date> periodDays_;
  Days found_;
  bool isAtCount_ = false;
};

Recurrence::Days Recurrence::Expand(const DateTime& begin, Date last, std::size_t most,
                                    WorkBudget& budget) const {
  return Walk(*this, begin, last, most, budget).Run();
}

}  // namespace orlune
