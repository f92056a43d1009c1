#include "store/calendars.h"

#include "store/database_access.h"
#include "store/rows.h"

namespace orlune {
namespace {

std::vector<Calendar> ReadCalendars(ResultSet& rows) {
  const int name = rows.Column("Name");
  const int friendlyName = rows.Column("FriendlyName");
  const int isGroup = rows.Column("IsGroup");
  std::vector<Calendar> calendars;
  while (rows.Next()) {
    calendars.push_back({std::string(TextOf(rows.Get(name))), std::string(TextOf(rows.Get(friendlyName))),
                         YesNoOf(rows.Get(isGroup))});
  }
  return calendars;
}

DisplaySettings ReadDisplaySettings(const ResultSet& row) {
  const auto number = [&](std::string_view column) { return NumberOf(row.Get(row.Column(column))); };
  const auto text = [&](std::string_view column) { return OptionalTextIn(row, column); };
  return {number("FirstDayOfWeek"), text("Weekend"),     number("DayBegin"), number("DayEnd"),
          text("StartMode"),        number("ClockMode"), text("SheetFile")};
}

StoredPreferences ReadPreferences(const ResultSet& row) {
  const auto number = [&](std::string_view column) { return NumberOf(row.Get(row.Column(column))); };
  const auto text = [&](std::string_view column) { return OptionalTextIn(row, column); };
  return {number("FirstDayOfWeek"), text("Weekend"),   number("ClockMode"), number("DayBegin"),
          number("DayEnd"),         text("StartMode"), number("StyleSheet")};
}

Account ReadAccount(const ResultSet& row) {
  return {NumberOf(row.Get(row.Column("CalendarID"))).value_or(0), OptionalTextIn(row, "Password"),
          TextIn(row, "AdminOfGroups")};
}

}  // namespace

Query<std::optional<DisplaySettings>> DisplaySettingsOf(std::string_view loginName) {
  return {Statement("SELECT FirstDayOfWeek, Weekend, DayBegin, DayEnd, StartMode, ClockMode, SheetFile "
                    "FROM Calendars INNER JOIN StyleSheets ON Calendars.StyleSheet = StyleSheets.SheetID "
                    "WHERE Name = '{}'",
                    loginName),
          [](ResultSet& rows) { return FirstRow(rows, ReadDisplaySettings); }};
}

Query<std::vector<CalendarWeekend>> WeekendsOf(std::span<const std::string> calendars) {
  if (calendars.empty()) return {};
  return {Statement("SELECT Name, Weekend FROM Calendars WHERE Name IN ({}) ORDER BY Name",
                    QuotedList(calendars)),
          [](ResultSet& rows) {
            std::vector<CalendarWeekend> weekends;
            while (rows.Next()) weekends.push_back({TextIn(rows, "Name"), OptionalTextIn(rows, "Weekend")});
            return weekends;
          }};
}

Query<bool> CalendarExists(std::string_view name) {
  return {NameQuery("Name", "Calendars", name), [](ResultSet& rows) { return rows.Next(); }};
}

Query<std::vector<std::string>> GroupNames() {
  return {Statement("SELECT Name FROM Calendars WHERE (IsGroup = yes)"),
          [](ResultSet& rows) { return TextsIn(rows, "Name"); }};
}

Query<std::vector<std::string>> MembershipsOf(std::span<const std::string> calendars) {
  if (calendars.empty()) return {};
  return {
      Statement("SELECT DISTINCT MemberOfGroups FROM Calendars WHERE Name IN ({})", QuotedList(calendars)),
      [](ResultSet& rows) { return TextsIn(rows, "MemberOfGroups"); }};
}

Query<std::optional<Account>> AccountOf(std::string_view loginName) {
  return {Statement("SELECT CalendarID, Password, AdminOfGroups FROM Calendars WHERE Name = '{}'", loginName),
          [](ResultSet& rows) { return FirstRow(rows, ReadAccount); }};
}

Query<std::optional<std::string>> FriendlyNameOf(std::string_view name) {
  return {Statement("SELECT FriendlyName FROM Calendars WHERE Name = '{}'", name), [](ResultSet& rows) {
            return FirstRow(rows, [](const ResultSet& row) { return TextIn(row, "FriendlyName"); });
          }};
}

Query<std::vector<Calendar>> CalendarsVisibleTo(std::string_view loginName) {
  return {Statement("SELECT Name, FriendlyName, IsGroup FROM Calendars "
                    "WHERE (IsHidden = no OR Name = '{}') ORDER BY IsGroup, FriendlyName",
                    loginName),
          ReadCalendars};
}

Query<std::optional<LoginAccount>> LoginAccountOf(std::string_view loginName) {
  return {Statement("SELECT Name, CalendarID, Password, AdminOfGroups FROM Calendars "
                    "WHERE (Name = '{}') AND (IsGroup = no)",
                    loginName),
          [](ResultSet& rows) {
            return FirstRow(rows, [](const ResultSet& row) {
              return LoginAccount{TextIn(row, "Name"), ReadAccount(row)};
            });
          }};
}

Query<std::optional<StoredPreferences>> PreferencesOf(std::string_view loginName) {
  return {Statement("SELECT FirstDayOfWeek, Weekend, ClockMode, DayBegin, DayEnd, StartMode, StyleSheet "
                    "FROM Calendars WHERE Name = '{}'",
                    loginName),
          [](ResultSet& rows) { return FirstRow(rows, ReadPreferences); }};
}

void StorePreferences(Connection& database, std::string_view loginName,
                      const StoredPreferences& preferences) {
  database.TryExecute(
      Statement("UPDATE Calendars SET StartMode = '{}', ClockMode = {}, StyleSheet = {}, "
                "DayBegin = {}, DayEnd = {}, FirstDayOfWeek = {}, Weekend = '{}' WHERE Name = '{}'",
                preferences.StartMode.value(), preferences.ClockMode.value(), preferences.StyleSheet.value(),
                preferences.DayBegin.value(), preferences.DayEnd.value(), preferences.FirstDayOfWeek.value(),
                preferences.Weekend.value(), loginName));
}

void StorePassword(Connection& database, std::string_view loginName, std::string_view password) {
  database.TryExecute(
      Statement("UPDATE Calendars SET Password = '{}' WHERE Name = '{}'", password, loginName));
}

void ReplacePassword(Connection& database, std::string_view loginName, std::string_view stored,
                     std::string_view password) {
  database.TryExecute(
      Statement("UPDATE Calendars SET Password = '{}' WHERE (Name = '{}') AND (Password = '{}')", password,
                loginName, stored));
}

Query<std::vector<Calendar>> CalendarsNamed(std::span<const std::string> names) {
  return {Statement("SELECT Name, FriendlyName FROM Calendars WHERE Name IN ({}) ORDER BY FriendlyName",
                    QuotedList(names)),
          [](ResultSet& rows) {
            const int name = rows.Column("Name");
            const int friendlyName = rows.Column("FriendlyName");
            std::vector<Calendar> calendars;
            while (rows.Next()) {
              calendars.push_back(
                  {std::string(TextOf(rows.Get(name))), std::string(TextOf(rows.Get(friendlyName)))});
            }
            return calendars;
          }};
}

Query<std::vector<Calendar>> GroupsNamed(std::span<const std::string> names) {
  return {Statement("SELECT Name, FriendlyName, IsGroup FROM Calendars WHERE IsGroup = yes AND Name IN ({}) "
                    "ORDER BY FriendlyName",
                    QuotedList(names)),
          ReadCalendars};
}

Query<std::vector<Calendar>> AllCalendars() {
  return {Statement("SELECT FriendlyName, Name, IsGroup FROM Calendars "
                    "ORDER BY IsGroup, FriendlyName"),
          ReadCalendars};
}

Query<std::vector<Calendar>> CalendarsExcept(std::string_view loginName) {
  return {Statement("SELECT Name, FriendlyName, IsGroup FROM Calendars "
                    "WHERE Name <> '{}' ORDER BY IsGroup, FriendlyName",
                    loginName),
          ReadCalendars};
}

Query<std::vector<std::string>> SpellingsOf(std::string_view name) {
  return {Statement("SELECT Name FROM Calendars WHERE Name = '{}'", name),
          [](ResultSet& rows) { return TextsIn(rows, "Name"); }};
}

Query<std::vector<std::string>> UserNames() {
  return {Statement("SELECT Name FROM Calendars WHERE IsGroup = no"),
          [](ResultSet& rows) { return TextsIn(rows, "Name"); }};
}

Query<std::vector<std::string>> MembersOfGroup(std::string_view group) {
  return {Statement("SELECT Name FROM Calendars WHERE MemberOfGroups LIKE '%{}%'", group),
          [](ResultSet& rows) { return TextsIn(rows, "Name"); }};
}

}  // namespace orlune
