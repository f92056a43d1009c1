#pragma once

#include <string>
#include <string_view>

namespace orlune {

/// `text` in lower case, code point by code point, whatever the region. Invalid UTF-8 stays as it is.
std::string ToLower(std::string_view text);

bool EqualIgnoringCase(std::string_view a, std::string_view b);

/// The first code point of `text`; "" when there is none.
std::string_view FirstCharacter(std::string_view text);

/// `text` without its first code point; "" when there is none.
std::string_view WithoutFirstCharacter(std::string_view text);

/// Replaces every occurrence of `from`, which is not empty.
std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to);

}  // namespace orlune
