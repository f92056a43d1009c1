#pragma once

#include <string_view>

#include "texts/text.h"

namespace orlune {

/// The built-in English text; "" when the table has none. "%s" and "%t" are placeholders; error texts end in
/// the two characters backslash and "n".
std::string_view EnglishText(Text id);

}  // namespace orlune
