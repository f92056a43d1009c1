#pragma once

#include <string_view>

#include "drivers/dialect/catalogue.h"

namespace orlune {

/// The forms of our tables: before and after the upgrade.
enum class SchemaForm { kBase, kCurrent };

/// Our tables in one form. Each begins with its counter.
dialect::Catalogue TablesInForm(SchemaForm form);

/// Whether the upgrade adds this column, or its whole table; with "" for a column, whether it adds the table.
bool IsAddedByUpgrade(std::string_view table, std::string_view column);

/// The tables that a database has once calendars are shared. Each begins with its counter.
dialect::Catalogue SharingTables();
/// Whether a sharing table means nothing in a copy: clients ask a copy anew what has changed.
bool IsOfOneDatabase(std::string_view sharingTable);

/// Sessions of logged-in users; ours, though not part of the calendar.
inline constexpr std::string_view kSessionsTable = "Sessions";

}  // namespace orlune
