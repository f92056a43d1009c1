#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/lists.h"

namespace orlune {

// The names and UIDs of events that were made on pages. Both have the name of the database in them, so that
// no client comes to the same by itself.

inline std::string NameOfNumber(int eventId, std::string_view databaseName) {
  return std::to_string(eventId) + "-" + std::string(databaseName) + ".ics";
}

/// Nothing when the name is none of this database's.
inline std::optional<int> NumberOfName(std::string_view name, std::string_view databaseName) {
  const std::size_t hyphen = name.find('-');
  if (hyphen == std::string_view::npos || name.substr(hyphen + 1) != std::string(databaseName) + ".ics")
    return std::nullopt;
  return RowNumber(name.substr(0, hyphen));
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

/// The number of an event that belongs to no object, as the log of changes has it; nothing for a name.
inline std::optional<int> NumberInLog(std::string_view logged) {
  return logged.starts_with('/') ? RowNumber(logged.substr(1)) : std::nullopt;
}

}  // namespace orlune
