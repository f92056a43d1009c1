#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/calendar_record.h"
#include "model/record_choice.h"
#include "store/query.h"

namespace orlune {

// The rows of Calendars as the administration edits them: users, groups, and the users' lists of groups.
// Functions that write throw DatabaseError.

Query<std::vector<RecordChoice>> UserRecords();
Query<std::vector<RecordChoice>> GroupRecords();
/// The groups to choose from for a user; their `Id` is the name.
Query<std::vector<RecordChoice>> GroupsToChoose();
/// The users to choose from for a group; their `Id` is the name.
Query<std::vector<RecordChoice>> UsersToChoose();
/// Nothing when there is no such user.
Query<std::optional<CalendarRecord>> UserWithId(std::int64_t id);
/// Nothing when there is no such group.
Query<std::optional<CalendarRecord>> GroupWithId(std::int64_t id);
/// The users whose list of groups contains `group`, joined with ", ".
Query<std::string> MemberListOf(std::string_view group);
Query<std::string> AdministratorListOf(std::string_view group);
/// Whether a calendar other than `id` has this name.
Query<bool> IsCalendarNameTaken(std::string_view name, std::optional<std::int64_t> id);
/// The `CalendarID`; nothing when there is no such calendar.
Query<std::optional<int>> CalendarIdOf(std::string_view name);
/// An internal name derived from `text` that no calendar has yet.
std::string UnusedCalendarName(Connection& database, std::string_view text);

/// Updates the user `id`, or inserts one with default preferences when there is no `id`.
void SaveUser(Connection& database, std::optional<std::int64_t> id, const CalendarRecord& user);
/// The same for a group; its lists and password are not written.
void SaveGroup(Connection& database, std::optional<std::int64_t> id, const CalendarRecord& group);
void DeleteCalendar(Connection& database, std::int64_t id);

/// A group's name before a change, "" for a new group, and its name now.
struct GroupName {
  std::string Before;
  std::string Now;
};
/// Updates the users' lists of groups: only the users in the text lists `members` and `administrators` have
/// the group in theirs, under its new name.
void UpdateGroupLists(Connection& database, const GroupName& group, std::string_view members,
                      std::string_view administrators);
/// Removes the group from the users' lists.
void RemoveFromGroupLists(Connection& database, std::string_view group);

}  // namespace orlune
