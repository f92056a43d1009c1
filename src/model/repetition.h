#pragma once

#include <optional>
#include <string_view>

namespace orlune {

/// How an event repeats.
enum class Repetition { kNone, kDaily, kByWeekday, kMonthly, kYearly, kUnknown };

/// How often an event falls on its weekdays.
enum class Frequency {
  kEveryWeek,
  kEvery2Weeks,
  kEvery3Weeks,
  kFirstInMonth,
  kSecondInMonth,
  kThirdInMonth,
  kFourthInMonth
};

/// What becomes of a day of a monthly or yearly event that is on a weekend.
enum class WeekendRule { kKeep, kSkip, kMoveForward, kMoveBack };

/// The texts that the database and the forms hold; "" for `Repetition::kUnknown`.
std::string_view StoredText(Repetition repetition);
std::string_view StoredText(Frequency frequency);
std::string_view StoredText(WeekendRule rule);

/// What such a text stands for; nothing for any other text.
std::optional<Repetition> RepetitionOf(std::string_view text);
std::optional<Frequency> FrequencyOf(std::string_view text);
std::optional<WeekendRule> WeekendRuleOf(std::string_view text);

}  // namespace orlune
