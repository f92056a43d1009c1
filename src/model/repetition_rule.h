#pragma once

#include <array>
#include <vector>

#include "base/week.h"
#include "model/ol_event.h"

namespace orlune {

/// The rule by which an event repeats, counted from its `BeginDate`. Does not check whether a day lies
/// between `BeginDate` and `EndDate`.
class RepetitionRule {
 public:
  /// The rule of an event that repeats by weekday, monthly or yearly; any other event never occurs. Only the
  /// weekend of `week` is used, which must outlive the rule.
  RepetitionRule(const OL_Event& event, const Week& week);

  bool OccursOn(Date date) const;

 private:
  enum class Kind { kNever, kEveryNWeeks, kNthInMonth, kMonthly, kYearly };

  void ReadWeekdayRule(const OL_Event& event);
  bool WeekFrequencyMatches(Date date) const;
  bool WeekOfMonthMatches(Date date) const;
  bool MonthDayMatches(Date date) const;
  /// Whether `date` is one of the days of the month; the last one stands for those that its month lacks.
  bool IsMonthDay(Date date) const;
  std::chrono::days Step() const;
  Date MovedOffWeekend(Date date) const;

  const Week* week_;
  Kind kind_ = Kind::kNever;
  WeekendRule weekends_ = WeekendRule::kKeep;
  int number_ = 0;  ///< the N in "every N weeks" and "Nth in the month"
  Date begin_;
  std::array<bool, 8> onWeekday_{};
  std::vector<int> monthDays_;
};

/// Whether a repeating event occurs on `date`, ignoring its `BeginDate` and `EndDate`.
bool OccursOn(Date date, const OL_Event& event, const Week& week);

}  // namespace orlune
