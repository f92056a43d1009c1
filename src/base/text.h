#pragma once

#include <charconv>
#include <concepts>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace orlune {

/// `text` in lower case, code point by code point, the same in every region. Invalid UTF-8 is left unchanged.
std::string ToLower(std::string_view text);

/// Whether `text` consists of digits 0 to 9, at least one.
bool IsDigits(std::string_view text);

bool EqualIgnoringCase(std::string_view a, std::string_view b);

/// The first code point of `text`; "" when `text` is empty.
std::string_view FirstCharacter(std::string_view text);

/// `text` without its first code point; "" when `text` is empty.
std::string_view WithoutFirstCharacter(std::string_view text);

/// Replaces every occurrence of `from`, which must not be empty.
std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to);

/// Escapes "&" so that a browser does not decode character references in `text`: it shows "&#39;" as such.
std::string WithReferencesShown(std::string_view text);

/// `text` without leading and trailing spaces and tabs.
std::string_view TrimBlanks(std::string_view text);

/// Parses all of `text` as a decimal integer; nothing when it is anything else, or out of range.
template <std::integral Number = int>
std::optional<Number> WholeNumber(std::string_view text) {
  Number number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return number;
}

}  // namespace orlune
