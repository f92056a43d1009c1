#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace orlune {

/// The names of an enumeration's values, in their order.
template <std::size_t count>
using EnumNames = std::array<std::string_view, count>;

template <class Enum, std::size_t count>
constexpr std::string_view NameOf(const EnumNames<count>& names, Enum value) {
  return names[static_cast<std::size_t>(value)];
}

/// The value called `name`, case-sensitive; nothing when there is none.
template <class Enum, std::size_t count>
constexpr std::optional<Enum> ValueNamed(const EnumNames<count>& names, std::string_view name) {
  for (std::size_t i = 0; i < count; ++i) {
    if (names[i] == name) return static_cast<Enum>(i);
  }
  return std::nullopt;
}

}  // namespace orlune
