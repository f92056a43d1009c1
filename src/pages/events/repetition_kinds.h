#pragma once

#include <array>

#include "html/html.h"
#include "texts/text.h"

namespace orlune {

/// A way in which events repeat: its stored name and its text.
struct RepetitionKind {
  Markup Name;
  Text Label;
};

inline constexpr std::array<RepetitionKind, 5> kRepetitionKinds{{{"none", Text::kNoRepetition},
                                                                 {"day", Text::kRepeatsDaily},
                                                                 {"weekday", Text::kRepeatsByWeekday},
                                                                 {"month", Text::kRepeatsMonthly},
                                                                 {"year", Text::kRepeatsYearly}}};

}  // namespace orlune
