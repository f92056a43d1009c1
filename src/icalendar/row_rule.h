#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/week.h"
#include "exchange/calendar_object.h"

namespace orlune {

/// A series that ends on this day or later is written without an end.
inline constexpr Date kFarEnd = std::chrono::year{2099} / 1 / 1;

/// The days of a row as iCalendar says them.
struct RowRule {
  Date First;          ///< of DTSTART
  Date LastOfSpan;     ///< of an all-day event that goes on for several days; else `First`
  std::string Rule{};  ///< of RRULE, without UNTIL; "" when there is none
  std::optional<Date> Until{};
  std::vector<Date> More{};     ///< of RDATE: days after `First` that no rule says
  std::vector<Date> LeftOut{};  ///< of EXDATE: days that the rule gives
};

/// Nothing when the row has no days.
std::optional<RowRule> RuleOf(const ObjectEvent& row, const Week& week);

/// The days on which the row occurs, in ascending order; at most `kMostDaysOfObject`.
std::vector<Date> DaysOf(const ObjectEvent& row, const Week& week);

}  // namespace orlune
