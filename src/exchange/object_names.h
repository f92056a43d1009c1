#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/lists.h"

namespace orlune {

// The names and UIDs of events that were made on pages.

inline std::string NameOfNumber(int eventId) {
  return std::to_string(eventId) + ".ics";
}

/// Nothing when the name is none of these.
inline std::optional<int> NumberOfName(std::string_view name) {
  constexpr std::string_view kEnding = ".ics";
  if (!name.ends_with(kEnding)) return std::nullopt;
  return RowNumber(name.substr(0, name.size() - kEnding.size()));
}

inline std::string UidOfNumber(int eventId, std::string_view databaseName) {
  return std::to_string(eventId) + "@" + std::string(databaseName);
}

/// Nothing when the UID is none of this database's.
inline std::optional<int> NumberOfUid(std::string_view uid, std::string_view databaseName) {
  const std::size_t at = uid.find('@');
  if (at == std::string_view::npos || uid.substr(at + 1) != databaseName) return std::nullopt;
  return RowNumber(uid.substr(0, at));
}

}  // namespace orlune
