#pragma once

#include <string_view>

#include "platform/database.h"

namespace orlune {

// Changes to other tables when a row of Calendars is renamed or deleted. Call them in the transaction of that
// change. All throw DatabaseError.

/// Renames the calendar `oldName` in its events, its group views, and the group views of others.
void MoveCalendarContent(Connection& database, std::string_view oldName, std::string_view newName);
/// The same for a user; also renames it in messages sent and received.
void MoveUserContent(Connection& database, std::string_view oldName, std::string_view newName);

/// Deletes a user's events, received messages and group views, and removes it from the group views of others.
void DeleteUserContent(Connection& database, std::string_view name);
/// Deletes a group's events, and removes it from the users' lists of groups.
void DeleteGroupContent(Connection& database, std::string_view name);

}  // namespace orlune
