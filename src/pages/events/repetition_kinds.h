#pragma once

#include <array>

#include "html/html.h"

namespace orlune {

/// A way in which events repeat: its stored name and the number of its text.
struct RepetitionKind {
  Markup Name;
  int Text;
};

inline constexpr std::array<RepetitionKind, 5> kRepetitionKinds{
    {{"none", 304}, {"day", 305}, {"weekday", 306}, {"month", 307}, {"year", 308}}};

}  // namespace orlune
