#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/calendar.h"
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

/// What decides whether a user is logged in, and what they may change.
struct Account {
  int Id = 0;
  std::optional<std::string> Password;  ///< in plain or hashed; nothing: any password will do
  std::string AdminOfGroups;            ///< joined with ", "
};
/// Nothing when there is no such user.
Query<std::optional<Account>> AccountOf(std::string_view loginName);

/// The display name; nothing when there is no such calendar.
Query<std::optional<std::string>> FriendlyNameOf(std::string_view name);
/// The calendars that `loginName` may choose from: those that are not hidden, and their own; users before
/// groups, by display name.
Query<std::vector<Calendar>> CalendarsVisibleTo(std::string_view loginName);

/// What a user logs in with.
struct LoginAccount {
  std::string Name;  ///< as it is stored
  orlune::Account Account;
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

/// Stores the text in place of the user's password. Changes nothing, and does not tell, when the statement
/// fails.
void StorePassword(Connection& database, std::string_view loginName, std::string_view password);

/// The calendars that have one of these names, by display name.
Query<std::vector<Calendar>> CalendarsNamed(std::span<const std::string> names);

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
