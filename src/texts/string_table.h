#pragma once

#include <string_view>

namespace orlune {

/// The built-in English text numbered `id` (100 to 870), or "" when the table has none. "%s" and "%t" stand
/// for arguments; error texts end in the two characters backslash and "n".
std::string_view StringTableText(int id);

}  // namespace orlune
