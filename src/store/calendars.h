#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/calendar.h"
#include "model/calendar_record.h"
#include "model/record_choice.h"
#include "store/query.h"

namespace orlune {

// The table Calendars: users and groups. Names are compared ignoring case. What writes throws DatabaseError.

/// A user's settings; what the row leaves Null is empty.
struct DisplaySettings {
  std::optional<int> FirstDayOfWeek;
  std::optional<std::string> Weekend;
  std::optional<int> DayBegin;
  std::optional<int> DayEnd;
  std::optional<std::string> StartMode;
  std::optional<int> ClockMode;
  std::optional<std::string> SheetFile;
};
/// Nothing when there is no such user, or no such colour scheme.
Query<std::optional<DisplaySettings>> DisplaySettingsOf(std::string_view loginName);

Query<bool> CalendarExists(std::string_view name);
Query<std::vector<std::string>> GroupNames();
/// The lists of groups that the calendars belong to, each different one once.
Query<std::vector<std::string>> MembershipsOf(std::span<const std::string> calendars);
/// The list of groups that the user administers, joined with ", "; nothing when there is no such user.
Query<std::optional<std::string>> AdminshipsOf(std::string_view loginName);

/// The display name; nothing when there is no such calendar.
Query<std::optional<std::string>> FriendlyNameOf(std::string_view name);
/// The calendars that `loginName` may choose from: those that are not hidden, and their own; users before
/// groups, by display name.
Query<std::vector<Calendar>> CalendarsVisibleTo(std::string_view loginName);

/// What a user logs in with.
struct LoginAccount {
  std::string Name;                     ///< as it is stored
  std::optional<std::string> Password;  ///< nothing: any password will do
};
/// Nothing when there is no such user.
Query<std::optional<LoginAccount>> LoginAccountOf(std::string_view loginName);

/// What the user sets in the preferences; what the row leaves Null is empty.
struct StoredPreferences {
  std::optional<int> FirstDayOfWeek;
  std::optional<std::string> Weekend;
  std::optional<int> ClockMode;
  std::optional<int> DayBegin;
  std::optional<int> DayEnd;
  std::optional<std::string> StartMode;
  std::optional<int> StyleSheet;
};
/// Nothing when there is no such user.
Query<std::optional<StoredPreferences>> PreferencesOf(std::string_view loginName);
/// Stores preferences that are all set. Changes nothing, and does not tell, when the statement fails.
void StorePreferences(Connection& database, std::string_view loginName, const StoredPreferences& preferences);

/// Whether `password` is the user's, which a password that is Null never is; nothing when there is no such
/// user.
Query<std::optional<bool>> IsPasswordOf(std::string_view loginName, std::string_view password);
/// Changes nothing, and does not tell, when the statement fails.
void StorePassword(Connection& database, std::string_view loginName, std::string_view password);

/// The calendars that have one of these names, by display name.
Query<std::vector<Calendar>> CalendarsNamed(std::span<const std::string> names);

// The administration.

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

/// All calendars, users before groups, by display name.
Query<std::vector<Calendar>> AllCalendars();
/// The same without that of `loginName`.
Query<std::vector<Calendar>> CalendarsExcept(std::string_view loginName);
/// The name of a calendar as it is stored; none when there is no such calendar.
Query<std::vector<std::string>> SpellingsOf(std::string_view name);
Query<std::vector<std::string>> UserNames();
/// The calendars in whose list of groups the text `group` occurs.
Query<std::vector<std::string>> MembersOfGroup(std::string_view group);

}  // namespace orlune
