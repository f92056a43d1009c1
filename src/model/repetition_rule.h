#pragma once

#include <array>
#include <vector>

#include "base/week.h"
#include "model/ol_event.h"

namespace orlune {

/// On which days a repeating event falls, counted from its `BeginDate`. Whether a day lies between
/// `BeginDate` and `EndDate` is for the caller to check.
class RepetitionRule {
 public:
  /// Reads the rule of an event that repeats by weekday, monthly or yearly; any other falls on no day. Only
  /// the weekend of `week` counts, which has to outlive the rule.
  RepetitionRule(const OL_Event& event, const Week& week);

  bool OccursOn(Date date) const;

 private:
  enum class Kind { kNever, kEveryNWeeks, kNthInMonth, kMonthly, kYearly };

  void ReadWeekdayRule(const OL_Event& event);
  bool WeekFrequencyMatches(Date date) const;
  bool WeekOfMonthMatches(Date date) const;
  bool MonthDayMatches(int dayNumber, Date date) const;
  Date MovedOffWeekend(Date date) const;

  const Week* week_;
  Kind kind_ = Kind::kNever;
  WeekendRule weekends_ = WeekendRule::kKeep;
  int number_ = 0;  ///< the N of "every N weeks" and of "Nth in the month"
  Date begin_;
  std::array<bool, 8> onWeekday_{};
  std::vector<int> monthDays_;
};

/// Whether a repeating event falls on `date`, whatever its first and last day.
bool OccursOn(Date date, const OL_Event& event, const Week& week);

}  // namespace orlune
