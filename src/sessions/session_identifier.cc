#include "sessions/session_identifier.h"

#include <array>

#include <sodium.h>

#include "sessions/hex_text.h"

namespace orlune {
namespace {

constexpr std::size_t kByteCount = 16;

}  // namespace

std::string NewSessionIdentifier() {
  std::array<unsigned char, kByteCount> bytes;
  randombytes_buf(bytes.data(), bytes.size());
  return HexText(bytes);
}

bool IsSessionIdentifier(std::string_view text) {
  return text.size() == 2 * kByteCount &&
         text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

}  // namespace orlune
