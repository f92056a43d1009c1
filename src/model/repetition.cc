#include "model/repetition.h"

#include "base/enum_names.h"

namespace orlune {
namespace {

constexpr EnumNames<6> kRepetitions{"none", "day", "weekday", "month", "year", "listed"};
constexpr EnumNames<7> kFrequencies{"vko_1", "vko_2", "vko_3", "kk_1", "kk_2", "kk_3", "kk_4"};
constexpr EnumNames<4> kWeekendRules{"vkl_ok", "vkl_no", "vkl_ma", "vkl_pe"};

}  // namespace

std::string_view StoredText(Repetition repetition) {
  return repetition == Repetition::kUnknown ? "" : NameOf(kRepetitions, repetition);
}
std::string_view StoredText(Frequency frequency) {
  return NameOf(kFrequencies, frequency);
}
std::string_view StoredText(WeekendRule rule) {
  return NameOf(kWeekendRules, rule);
}

std::optional<Repetition> RepetitionOf(std::string_view text) {
  return ValueNamed<Repetition>(kRepetitions, text);
}
std::optional<Frequency> FrequencyOf(std::string_view text) {
  return ValueNamed<Frequency>(kFrequencies, text);
}
std::optional<WeekendRule> WeekendRuleOf(std::string_view text) {
  return ValueNamed<WeekendRule>(kWeekendRules, text);
}

}  // namespace orlune
