#pragma once

#include <string>

namespace orlune {

/// `text` as valid UTF-8 without NUL: each invalid byte becomes U+FFFD.
std::string RepairUtf8(std::string text);

/// Appends a code point as UTF-8.
void AppendUtf8(std::string& text, char32_t codePoint);

}  // namespace orlune
