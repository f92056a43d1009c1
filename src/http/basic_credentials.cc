#include "http/basic_credentials.h"

#include <algorithm>
#include <cstdint>

#include "base/ascii.h"
#include "base/text.h"
#include "base/utf8.h"

namespace orlune {
namespace {

constexpr std::size_t kMostBytes = 2048;

bool IsControl(char c) {
  return static_cast<unsigned char>(c) < 0x20 || c == '\x7F';
}

/// Base64 (RFC 4648) with or without its padding.
std::optional<std::string> DecodeBase64(std::string_view text) {
  constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  for (int padding = 0; padding < 2 && text.ends_with('='); ++padding) text.remove_suffix(1);
  if (text.size() % 4 == 1) return std::nullopt;
  std::string decoded;
  std::uint32_t bits = 0;
  unsigned count = 0;
  for (const char c : text) {
    const std::size_t digit = kDigits.find(c);
    if (digit == std::string_view::npos) return std::nullopt;
    bits = (bits << 6U) | static_cast<std::uint32_t>(digit);
    count += 6;
    if (count < 8) continue;
    count -= 8;
    decoded += static_cast<char>((bits >> count) & 0xFFU);
  }
  return decoded;
}

}  // namespace

std::optional<BasicCredentials> ReadBasicCredentials(std::string_view header) {
  constexpr std::string_view kScheme = "Basic ";
  if (header.size() > kMostBytes || !EqualsIgnoringAsciiCase(header.substr(0, kScheme.size()), kScheme))
    return std::nullopt;
  const auto decoded = DecodeBase64(TrimBlanks(header.substr(kScheme.size())));
  if (!decoded || std::ranges::any_of(*decoded, IsControl) || RepairUtf8(*decoded) != *decoded)
    return std::nullopt;
  const std::size_t colon = decoded->find(':');
  if (colon == std::string::npos || colon == 0) return std::nullopt;
  return BasicCredentials{decoded->substr(0, colon), decoded->substr(colon + 1)};
}

}  // namespace orlune
