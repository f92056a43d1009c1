#include "base/json_text.h"

#include "base/utf8.h"

namespace orlune {
namespace {

constexpr std::string_view kHexDigits = "0123456789abcdef";

}  // namespace

std::string JsonText(std::string_view text) {
  std::string json = "\"";
  for (const char c : RepairUtf8(std::string(text))) {
    if (c == '"' || c == '\\') {
      json.append(1, '\\').append(1, c);
    } else if (c == '\n') {
      json += "\\n";
    } else if (c >= 0 && c < ' ') {
      const auto code = static_cast<unsigned char>(c);
      json.append("\\u00").append(1, kHexDigits[code >> 4U]).append(1, kHexDigits[code & 15U]);
    } else {
      json += c;
    }
  }
  return json + '"';
}

}  // namespace orlune
