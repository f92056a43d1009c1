#pragma once

#include <string_view>

namespace orlune {

inline bool IsAscii(char c) {
  return static_cast<unsigned char>(c) < 0x80;
}
bool IsAscii(std::string_view text);

/// Changes A to Z only.
inline char ToLowerAscii(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
}

/// Ignores the case of A to Z only, as names in HTTP and SQL are compared.
bool EqualsIgnoringAsciiCase(std::string_view a, std::string_view b);

}  // namespace orlune
