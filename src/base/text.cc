#include "base/text.h"

#include <algorithm>
#include <charconv>
#include <locale>

#include "base/ascii.h"
#include "base/utf8.h"

namespace orlune {
namespace {

/// The case rules of Unicode, which the C library carries under this name on every Debian.
const std::ctype<wchar_t>& UnicodeCharacters() {
  static const std::locale kUnicode("C.UTF-8");
  return std::use_facet<std::ctype<wchar_t>>(kUnicode);
}

/// Consumes one well-formed multi-byte code point of `text`; returns 0, consuming nothing, when there is
/// none.
char32_t TakeCodePoint(std::string_view& text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const std::size_t length = byte(0) >= 0xF0 ? 4 : byte(0) >= 0xE0 ? 3 : byte(0) >= 0xC2 ? 2 : 0;
  if (length == 0 || length > text.size()) return 0;
  char32_t codePoint = byte(0) & (0xFFU >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return 0;
    codePoint = codePoint << 6 | (byte(i) & 0x3F);
  }
  text.remove_prefix(length);
  return codePoint;
}

}  // namespace

std::string ToLower(std::string_view text) {
  std::string lower;
  lower.reserve(text.size());
  while (!text.empty()) {
    const char first = text.front();
    const char32_t codePoint = IsAscii(first) ? 0 : TakeCodePoint(text);
    if (codePoint == 0) {
      lower += ToLowerAscii(first);
      text.remove_prefix(1);
    } else {
      AppendUtf8(lower, static_cast<char32_t>(UnicodeCharacters().tolower(static_cast<wchar_t>(codePoint))));
    }
  }
  return lower;
}

bool IsDigits(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

bool EqualIgnoringCase(std::string_view a, std::string_view b) {
  if (a == b) return true;
  if (!IsAscii(a) || !IsAscii(b)) return ToLower(a) == ToLower(b);
  return EqualsIgnoringAsciiCase(a, b);
}

std::string_view WithoutFirstCharacter(std::string_view text) {
  if (!text.empty() && TakeCodePoint(text) == 0) text.remove_prefix(1);
  return text;
}

std::string_view FirstCharacter(std::string_view text) {
  return text.substr(0, text.size() - WithoutFirstCharacter(text).size());
}

std::string WithReferencesShown(std::string_view text) {
  std::string shown;
  shown.reserve(text.size());
  for (std::size_t at = 0; at < text.size(); ++at) {
    shown += text[at];
    const char next = at + 1 < text.size() ? text[at + 1] : ' ';
    const bool mayBeReference = next == '#' || (next >= 'A' && next <= 'Z') || (next >= 'a' && next <= 'z');
    if (text[at] == '&' && mayBeReference) shown += "amp;";
  }
  return shown;
}

std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to) {
  std::string replaced;
  replaced.reserve(text.size());
  for (std::size_t at = text.find(from); at != std::string_view::npos; at = text.find(from)) {
    replaced.append(text.substr(0, at)).append(to);
    text.remove_prefix(at + from.size());
  }
  return replaced.append(text);
}

std::string_view TrimBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

}  // namespace orlune
