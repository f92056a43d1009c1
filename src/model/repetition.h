#pragma once

#include <optional>
#include <string_view>

namespace orlune {

/// How an event repeats. The days of a listed one are in `EventDays`.
enum class Repetition { kNone, kDaily, kByWeekday, kMonthly, kYearly, kListed, kUnknown };

/// On which of its weekdays an event occurs: every Nth week, or the Nth in each month.
enum class Frequency {
  kEveryWeek,
  kEvery2Weeks,
  kEvery3Weeks,
  kFirstInMonth,
  kSecondInMonth,
  kThirdInMonth,
  kFourthInMonth
};

/// What happens to an occurrence of a monthly or yearly event on a weekend.
enum class WeekendRule { kKeep, kSkip, kMoveForward, kMoveBack };

/// The text in the database and in forms; "" for `Repetition::kUnknown`.
std::string_view StoredText(Repetition repetition);
std::string_view StoredText(Frequency frequency);
std::string_view StoredText(WeekendRule rule);

/// The inverse; nothing for an unknown text.
std::optional<Repetition> RepetitionOf(std::string_view text);
std::optional<Frequency> FrequencyOf(std::string_view text);
std::optional<WeekendRule> WeekendRuleOf(std::string_view text);

}  // namespace orlune
