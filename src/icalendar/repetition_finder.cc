#include "icalendar/repetition_finder.h"

#include <array>
#include <set>
#include <string>
#include <vector>

#include "base/dates.h"
#include "base/lists.h"
#include "model/repetition_rule.h"

namespace orlune {

using std::chrono::days;
using std::chrono::year_month_day;
using std::chrono::years;

namespace {

constexpr std::size_t kLeastOfEndless = 3;  // of fewer days nobody can tell the rule
constexpr std::array kWeekendRules{WeekendRule::kKeep, WeekendRule::kSkip, WeekendRule::kMoveForward,
                                   WeekendRule::kMoveBack};

std::string List(const std::set<int>& numbers) {
  std::vector<std::string> items;
  items.reserve(numbers.size());
  for (const int number : numbers) items.push_back(std::to_string(number));
  return JoinList(items);
}

/// Tries kinds until one gives the days.
class Finder {
 public:
  Finder(const SeriesDays& series, const Week& week) : series_(series), week_(week) {}

  std::optional<OL_Event> Find() {
    if (TryDaily() || TryWeekday() || TryMonthly() || TryYearly()) return found_;
    return std::nullopt;
  }

 private:
  Date First() const { return series_.Days.front(); }

  bool TryDaily() {
    OL_Event event;
    event.Type = Repetition::kDaily;
    return Try(event, First());
  }

  bool TryWeekday() {
    std::set<int> weekdays;
    for (const Date day : series_.Days) weekdays.insert(WeekdayNumber(day));
    OL_Event event;
    event.Type = Repetition::kByWeekday;
    event.RepeatWeekday = List(weekdays);
    for (const Frequency frequency :
         {Frequency::kEveryWeek, Frequency::kEvery2Weeks, Frequency::kEvery3Weeks}) {
      event.RepeatFrequency = frequency;
      const int begins = frequency == Frequency::kEveryWeek ? 1 : 7;
      for (int before = 0; before < begins; ++before) {
        if (Try(event, First() - days{before})) return true;
      }
    }
    const int number = (DayOfMonth(First()) - 1) / 7;
    if (number > 3) return false;
    event.RepeatFrequency = static_cast<Frequency>(static_cast<int>(Frequency::kFirstInMonth) + number);
    return Try(event, First());
  }

  bool TryMonthly() {
    OL_Event event;
    event.Type = Repetition::kMonthly;
    for (const WeekendRule weekends : kWeekendRules) {
      event.RepeatWeekends = weekends;
      for (const int last : {0, 31, 30, 29}) {
        event.RepeatDay = List(NominalDays(weekends, last));
        if (!event.RepeatDay.empty() && Try(event, First())) return true;
      }
      if (weekends == WeekendRule::kKeep || weekends == WeekendRule::kSkip) continue;
      for (int number = 1; number <= 31; ++number) {
        event.RepeatDay = std::to_string(number);
        if (Try(event, First())) return true;
      }
    }
    return false;
  }

  /// The days of the month that the event has when nothing moves; with `last` for the last day of a month.
  std::set<int> NominalDays(WeekendRule weekends, int last) const {
    std::set<int> numbers;
    for (const Date day : series_.Days) {
      if (weekends == WeekendRule::kMoveForward && week_.IsWeekend(day - days{1})) continue;
      if (weekends == WeekendRule::kMoveBack && week_.IsWeekend(day + days{1})) continue;
      numbers.insert(last != 0 && DayOfMonth(day + days{1}) == 1 ? last : DayOfMonth(day));
    }
    return numbers;
  }

  bool TryYearly() {
    OL_Event event;
    event.Type = Repetition::kYearly;
    for (const WeekendRule weekends : kWeekendRules) {
      event.RepeatWeekends = weekends;
      if (Try(event, First())) return true;
      const bool isForward = weekends == WeekendRule::kMoveForward;
      if (!isForward && weekends != WeekendRule::kMoveBack) continue;
      for (int moves = 1; moves < 7; ++moves) {
        // A day that moves back may begin only in the year before, or its first move would be cut off.
        const Date begin = isForward ? First() - days{moves} : YearBefore(First() + days{moves});
        if (Try(event, begin)) return true;
      }
    }
    return false;
  }

  static Date YearBefore(Date date) {
    const year_month_day before = year_month_day{date} - years{1};
    return before.ok() ? Date{before} : Date{before.year() / before.month() / std::chrono::last};
  }

  bool Try(OL_Event& event, Date begin) {
    if (series_.GoesOnTo && series_.Days.size() < kLeastOfEndless) return false;
    event.BeginDate = begin;
    if (!Gives(event)) return false;
    event.EndDate = series_.GoesOnTo.value_or(series_.Last);
    found_ = event;
    return true;
  }

  bool Gives(const OL_Event& event) const {
    const RepetitionRule rule(event, week_);
    auto expected = series_.Days.begin();
    for (Date date = event.BeginDate; date <= series_.Last; date += days{1}) {
      const bool isExpected = expected != series_.Days.end() && *expected == date;
      if (isExpected) ++expected;
      if (date >= First() && isExpected != (event.Type == Repetition::kDaily || rule.OccursOn(date)))
        return false;
    }
    return true;
  }

  const SeriesDays& series_;
  const Week& week_;
  OL_Event found_;
};

}  // namespace

std::optional<OL_Event> FindRepetition(const SeriesDays& series, const Week& week) {
  return Finder(series, week).Find();
}

}  // namespace orlune
