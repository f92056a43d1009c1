#pragma once

#include <string_view>
#include <vector>

#include "pages/admin/admin_state.h"
#include "store/database_access.h"

namespace orlune {

struct Visit;

// What users and groups, both rows of Calendars, have in common in the administration.

/// Fills `record` from the user (`isGroup` "no") or the group ("yes") of its `Id`; false when there is none.
bool LoadCalendar(const Visit& visit, AdminState& record, SqlLiteral isGroup);

/// Whether the calendar is hidden by the posted form: "yes" or "no", or `otherwise` when it tells neither.
std::string_view PostedHide(const Visit& visit, std::string_view otherwise);

/// Whether `name` holds nothing but unaccented letters and digits.
bool IsAlphanumeric(std::string_view name);
/// Whether another calendar than the record's has its internal name.
bool IsNameTaken(const Visit& visit, const AdminState& record);

/// The preferences that a new calendar begins with.
void AddPreferenceDefaults(std::vector<ColumnValue>& columns);

/// Gives what belongs to the calendar `oldName` to `newName`: its events, its group views, and its place in
/// the group views of others.
void RenameCalendar(Connection& database, std::string_view oldName, std::string_view newName);

}  // namespace orlune
