#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "commands/findings.h"
#include "drivers/dialect/catalogue.h"
#include "drivers/schema/database_maintenance.h"

namespace orlune {

/// The names of all users and groups, compared ignoring case as the databases do.
class CalendarNames {
 public:
  /// Adds missing and duplicate names to `findings`. Throws DatabaseError.
  CalendarNames(DatabaseMaintenance& database, const dialect::Table& calendars, Findings& findings);

  bool Contains(std::string_view name) const;
  bool IsGroup(std::string_view name) const;

 private:
  std::unordered_map<std::string, bool> isGroup_;  // by the folded name
};

}  // namespace orlune
