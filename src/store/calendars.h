#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/calendar.h"
#include "store/query.h"

namespace orlune {

// The table Calendars: users and groups. Names are compared ignoring case. Functions that write throw
// DatabaseError.

/// A user's settings; Null columns are empty.
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

/// The weekend of a calendar, as weekday numbers joined with ", ".
struct CalendarWeekend {
  std::string Calendar;
  std::optional<std::string> Weekend;
};
Query<std::vector<CalendarWeekend>> WeekendsOf(std::span<const std::string> calendars);

Query<bool> CalendarExists(std::string_view name);
Query<std::vector<std::string>> GroupNames();
/// The distinct text lists `MemberOfGroups` of the calendars.
Query<std::vector<std::string>> MembershipsOf(std::span<const std::string> calendars);

/// The credentials and rights of a user.
struct Account {
  int Id = 0;
  std::optional<std::string> Password;  ///< plain text or hash; nothing: any password is accepted
  std::string AdminOfGroups;            ///< joined with ", "
};
/// Nothing when there is no such user.
Query<std::optional<Account>> AccountOf(std::string_view loginName);

/// The display name; nothing when there is no such calendar.
Query<std::optional<std::string>> FriendlyNameOf(std::string_view name);
/// The calendars offered to `loginName`: those that are not hidden, and their own; users before groups, by
/// display name.
Query<std::vector<Calendar>> CalendarsVisibleTo(std::string_view loginName);

/// A user's credentials.
struct LoginAccount {
  std::string Name;  ///< as it is stored
  orlune::Account Account;
};
/// Nothing when there is no such user.
Query<std::optional<LoginAccount>> LoginAccountOf(std::string_view loginName);

/// What the user sets in the preferences; Null columns are empty.
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
/// All of `preferences` must be set. An error is ignored: nothing is stored then.
void StorePreferences(Connection& database, std::string_view loginName, const StoredPreferences& preferences);

/// `password` is stored as given, plain text or hash. An error is ignored: nothing is stored then.
void StorePassword(Connection& database, std::string_view loginName, std::string_view password);
/// The same, unless the stored text is no longer `stored`: somebody else has replaced it meanwhile.
void ReplacePassword(Connection& database, std::string_view loginName, std::string_view stored,
                     std::string_view password);

/// The calendars with these names, by display name.
Query<std::vector<Calendar>> CalendarsNamed(std::span<const std::string> names);

/// The groups with these names, by display name.
Query<std::vector<Calendar>> GroupsNamed(std::span<const std::string> names);

/// All calendars, users before groups, by display name.
Query<std::vector<Calendar>> AllCalendars();
/// The same except that of `loginName`.
Query<std::vector<Calendar>> CalendarsExcept(std::string_view loginName);
/// The name of a calendar as it is stored; empty when there is no such calendar.
Query<std::vector<std::string>> SpellingsOf(std::string_view name);
Query<std::vector<std::string>> UserNames();
/// The calendars in whose list of groups `group` occurs as a substring.
Query<std::vector<std::string>> MembersOfGroup(std::string_view group);

}  // namespace orlune
