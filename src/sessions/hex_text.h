#pragma once

#include <span>
#include <string>

#include <sodium.h>

namespace orlune {

/// The bytes as lower-case hexadecimal digits.
inline std::string HexText(std::span<const unsigned char> bytes) {
  std::string text(2 * bytes.size() + 1, '\0');
  sodium_bin2hex(text.data(), text.size(), bytes.data(), bytes.size());
  text.pop_back();
  return text;
}

}  // namespace orlune
