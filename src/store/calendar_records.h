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

// The rows of Calendars as the administration writes them: users, groups, and the lists that connect them.
// What writes throws DatabaseError.

Query<std::vector<RecordChoice>> UserRecords();
Query<std::vector<RecordChoice>> GroupRecords();
/// The groups that a user may belong to, chosen by name.
Query<std::vector<RecordChoice>> GroupsToChoose();
/// The users that a group may have, chosen by name.
Query<std::vector<RecordChoice>> UsersToChoose();
/// Nothing when there is no such user.
Query<std::optional<CalendarRecord>> UserWithId(std::int64_t id);
/// Nothing when there is no such group.
Query<std::optional<CalendarRecord>> GroupWithId(std::int64_t id);
/// The calendars whose list of groups holds `group`, joined with ", ".
Query<std::string> MemberListOf(std::string_view group);
Query<std::string> AdministratorListOf(std::string_view group);
/// Whether a calendar other than `id` has this name.
Query<bool> IsCalendarNameTaken(std::string_view name, std::optional<std::int64_t> id);
/// The number of the calendar of that name; nothing when there is none.
Query<std::optional<int>> CalendarIdOf(std::string_view name);
/// A name made from `text` that no calendar has yet.
std::string UnusedCalendarName(Connection& database, std::string_view text);

/// Writes a user; a new one, without `id`, begins with the usual preferences.
void SaveUser(Connection& database, std::optional<std::int64_t> id, const CalendarRecord& user);
/// The same for a group, whose lists and password are not written.
void SaveGroup(Connection& database, std::optional<std::int64_t> id, const CalendarRecord& group);
void DeleteCalendar(Connection& database, std::int64_t id);

/// A group's name before a change, "" for a new group, and its name now.
struct GroupName {
  std::string Before;
  std::string Now;
};
/// Brings the users' lists into line: the group is, under its present name, in those of the users `members`
/// and `administrators` alone, both joined with ", ".
void AlignGroupLists(Connection& database, const GroupName& group, std::string_view members,
                     std::string_view administrators);
/// Takes the group out of the users' lists.
void RemoveFromGroupLists(Connection& database, std::string_view group);

}  // namespace orlune
