#pragma once

#include <string_view>

#include "platform/database.h"

namespace orlune {

// What follows in other tables when a row of Calendars is renamed or deleted. Belongs into the transaction of
// that change; throws DatabaseError.

/// Gives what belongs to the calendar `oldName` to `newName`: its events, its group views, and its place in
/// the group views of others.
void MoveCalendarContent(Connection& database, std::string_view oldName, std::string_view newName);
/// The same for a user, with the messages sent and received.
void MoveUserContent(Connection& database, std::string_view oldName, std::string_view newName);

/// Deletes a user's events, received messages and group views, and the places in the group views of others.
void DeleteUserContent(Connection& database, std::string_view name);
/// Deletes a group's events, and takes it out of the users' lists of groups.
void DeleteGroupContent(Connection& database, std::string_view name);

}  // namespace orlune
