#pragma once

#include <cstddef>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

#include "texts/text.h"

namespace orlune {

struct Visit;

/// The most that a page stores of what is typed. A value that is no longer than the stored one that it
/// replaces is never too long, so that rows from before these limits can still be changed.
inline constexpr std::size_t kMostTextBytes = std::size_t{64} << 10U;
/// Of all copies that one sending stores.
inline constexpr std::size_t kMostSentBytes = std::size_t{64} << 20U;

/// The field of a form in which a name or title is typed.
struct NameField {
  Text Label;
  std::string_view Typed;
  std::size_t MostCharacters;  ///< what its column is made for
  std::string_view Stored = {};
};

/// Appends an alert for each field that is too long.
void CheckLengths(Visit& visit, std::initializer_list<NameField> fields);
/// Appends an alert when a field with several lines, or a list of names, is too long.
void CheckTextLength(Visit& visit, Text label, std::string_view typed, std::string_view stored = {});
/// Appends an alert when copies of `copyBytes` for each of `recipients` are too much for one sending; a group
/// stands for its members. Throws DatabaseError.
void CheckSending(Visit& visit, std::span<const std::string> recipients, std::size_t copyBytes);

}  // namespace orlune
