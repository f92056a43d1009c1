#pragma once

#include <algorithm>
#include <array>
#include <cstddef>

#include "model/repetition.h"
#include "texts/text.h"

namespace orlune {

// What users read for the parts of a repetition, in the order in which forms offer them.

template <class Value>
struct Labelled {
  Value Of;
  Text Label;
};

inline constexpr std::array<Labelled<Repetition>, 5> kRepetitionKinds{
    {{Repetition::kNone, Text::kNoRepetition},
     {Repetition::kDaily, Text::kRepeatsDaily},
     {Repetition::kByWeekday, Text::kRepeatsByWeekday},
     {Repetition::kMonthly, Text::kRepeatsMonthly},
     {Repetition::kYearly, Text::kRepeatsYearly}}};
inline constexpr std::array<Labelled<Frequency>, 7> kFrequencyLabels{
    {{Frequency::kEveryWeek, Text::kEveryWeek},
     {Frequency::kEvery2Weeks, Text::kEvery2Weeks},
     {Frequency::kEvery3Weeks, Text::kEvery3Weeks},
     {Frequency::kFirstInMonth, Text::kFirstInMonth},
     {Frequency::kSecondInMonth, Text::kSecondInMonth},
     {Frequency::kThirdInMonth, Text::kThirdInMonth},
     {Frequency::kFourthInMonth, Text::kFourthInMonth}}};
inline constexpr std::array<Labelled<WeekendRule>, 4> kWeekendRuleLabels{
    {{WeekendRule::kKeep, Text::kAlsoOnWeekends},
     {WeekendRule::kSkip, Text::kSkipWeekends},
     {WeekendRule::kMoveForward, Text::kMoveForward},
     {WeekendRule::kMoveBack, Text::kMoveBack}}};

/// The label of a value; that of the first one for a value that is not offered.
template <class Value, std::size_t count>
constexpr Text LabelOf(const std::array<Labelled<Value>, count>& labels, Value value) {
  const auto found = std::ranges::find(labels, value, &Labelled<Value>::Of);
  return found == labels.end() ? labels.front().Label : found->Label;
}

}  // namespace orlune
