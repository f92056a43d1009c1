#pragma once

#include <charconv>
#include <concepts>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace orlune {

/// `text` in lower case, code point by code point, whatever the region. Invalid UTF-8 stays as it is.
std::string ToLower(std::string_view text);

/// Whether `text` is one or more of the digits 0 to 9 and nothing else.
bool IsDigits(std::string_view text);

bool EqualIgnoringCase(std::string_view a, std::string_view b);

/// The first code point of `text`; "" when there is none.
std::string_view FirstCharacter(std::string_view text);

/// `text` without its first code point; "" when there is none.
std::string_view WithoutFirstCharacter(std::string_view text);

/// Replaces every occurrence of `from`, which is not empty.
std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to);

/// `text` with its "&" written so that a page shows what looks like a character reference as it stands.
std::string WithReferencesShown(std::string_view text);

/// `text` without the blanks and tabs at its ends.
std::string_view TrimBlanks(std::string_view text);

/// The whole number that is all of `text`; nothing when the text is anything else, or out of range.
template <std::integral Number = int>
std::optional<Number> WholeNumber(std::string_view text) {
  Number number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return number;
}

}  // namespace orlune
