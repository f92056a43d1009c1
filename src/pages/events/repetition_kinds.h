#pragma once

#include <array>

#include "model/repetition.h"
#include "texts/text.h"

namespace orlune {

/// A kind of repetition and its label.
struct RepetitionKind {
  Repetition Value;
  Text Label;
};

inline constexpr std::array<RepetitionKind, 5> kRepetitionKinds{
    {{Repetition::kNone, Text::kNoRepetition},
     {Repetition::kDaily, Text::kRepeatsDaily},
     {Repetition::kByWeekday, Text::kRepeatsByWeekday},
     {Repetition::kMonthly, Text::kRepeatsMonthly},
     {Repetition::kYearly, Text::kRepeatsYearly}}};

}  // namespace orlune
