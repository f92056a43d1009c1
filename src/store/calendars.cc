#include "store/calendars.h"

#include "base/lists.h"
#include "base/name_set.h"
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
  const auto text = [&](std::string_view column) {
    const Value value = row.Get(row.Column(column));
    return IsNull(value) ? std::nullopt : std::optional<std::string>(TextOf(value));
  };
  return {number("FirstDayOfWeek"), text("Weekend"),     number("DayBegin"), number("DayEnd"),
          text("StartMode"),        number("ClockMode"), text("SheetFile")};
}

}  // namespace

Query<std::optional<DisplaySettings>> DisplaySettingsOf(std::string_view loginName) {
  return {Statement("SELECT FirstDayOfWeek, Weekend, DayBegin, DayEnd, StartMode, ClockMode, SheetFile "
                    "FROM Calendars INNER JOIN StyleSheets ON Calendars.StyleSheet = StyleSheets.SheetID "
                    "WHERE Name = '{}'",
                    loginName),
          [](ResultSet& rows) { return FirstRow(rows, ReadDisplaySettings); }};
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

Query<std::optional<std::string>> AdminshipsOf(std::string_view loginName) {
  return {Statement("SELECT AdminOfGroups FROM Calendars WHERE Name = '{}'", loginName), [](ResultSet& rows) {
            return FirstRow(rows, [](const ResultSet& row) { return TextIn(row, "AdminOfGroups"); });
          }};
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
  return {Statement("SELECT Name, Password FROM Calendars WHERE (Name = '{}') AND (IsGroup = no)", loginName),
          [](ResultSet& rows) {
            return FirstRow(rows, [](const ResultSet& row) {
              const Value password = row.Get(row.Column("Password"));
              return LoginAccount{TextIn(row, "Name"), IsNull(password)
                                                           ? std::nullopt
                                                           : std::optional<std::string>(TextOf(password))};
            });
          }};
}

namespace {

StoredPreferences ReadPreferences(const ResultSet& row) {
  const auto number = [&](std::string_view column) { return NumberOf(row.Get(row.Column(column))); };
  const auto text = [&](std::string_view column) {
    const Value value = row.Get(row.Column(column));
    return IsNull(value) ? std::nullopt : std::optional<std::string>(TextOf(value));
  };
  return {number("FirstDayOfWeek"), text("Weekend"),   number("ClockMode"), number("DayBegin"),
          number("DayEnd"),         text("StartMode"), number("StyleSheet")};
}

Query<std::optional<CalendarRecord>> CalendarWithId(std::int64_t id, SqlLiteral isGroup) {
  const auto read = [](const ResultSet& row) {
    return CalendarRecord{TextIn(row, "FriendlyName"),  TextIn(row, "Name"),
                          TextIn(row, "Password"),      TextIn(row, "MemberOfGroups"),
                          TextIn(row, "AdminOfGroups"), YesNoOf(row.Get(row.Column("IsHidden")))};
  };
  return {Statement("SELECT FriendlyName, Name, Password, MemberOfGroups, AdminOfGroups, "
                    "IsHidden FROM Calendars WHERE (CalendarID = {}) AND (IsGroup = {})",
                    id, isGroup),
          [read](ResultSet& rows) { return FirstRow(rows, read); }};
}

/// The calendars whose list in `column` holds the group as a whole item.
Query<std::string> CalendarsNaming(SqlLiteral column, std::string_view group) {
  return {Statement("SELECT Name, {} FROM Calendars WHERE ({} LIKE '%{}%')", column, column, group),
          [column, group = std::string(group)](ResultSet& rows) {
            const int name = rows.Column("Name");
            const int groups = rows.Column(column.Text());
            std::string names;
            while (rows.Next()) {
              if (!IsNameInList(TextOf(rows.Get(groups)), group)) continue;
              if (!names.empty()) names += ", ";
              names += TextOf(rows.Get(name));
            }
            return names;
          }};
}

Statement WithId(std::int64_t id) {
  return Statement("WHERE (CalendarID = {})", id);
}

void SaveCalendar(Connection& database, std::optional<std::int64_t> id, std::vector<ColumnValue> columns) {
  if (!id) {
    columns.push_back({"ClockMode", SqlValue("*24")});
    columns.push_back({"FirstDayOfWeek", SqlValue("*2")});
    columns.push_back({"Weekend", SqlValue("1, 7")});
  }
  database.Execute(SaveRow("Calendars", columns, id ? WithId(*id) : Statement()));
}

/// A user's two lists of groups.
struct GroupLists {
  std::string MemberOf;
  std::string AdminOf;

  friend bool operator==(const GroupLists&, const GroupLists&) = default;
};

struct UserLists {
  std::string Name;
  GroupLists Lists;
};

std::vector<UserLists> ReadUserLists(ResultSet& rows) {
  const int name = rows.Column("Name");
  const int memberOf = rows.Column("MemberOfGroups");
  const int adminOf = rows.Column("AdminOfGroups");
  std::vector<UserLists> users;
  while (rows.Next()) {
    users.push_back({std::string(TextOf(rows.Get(name))),
                     {std::string(TextOf(rows.Get(memberOf))), std::string(TextOf(rows.Get(adminOf)))}});
  }
  return users;
}

void StoreGroupLists(Connection& database, const UserLists& user, const GroupLists& lists) {
  if (lists == user.Lists) return;
  const std::array<ColumnValue, 2> columns{
      {{"MemberOfGroups", SqlText(lists.MemberOf)}, {"AdminOfGroups", SqlText(lists.AdminOf)}}};
  database.Execute(
      BuildSql(SqlMode::kUpdate, "Calendars", columns, Statement("WHERE Name = '{}'", user.Name)));
}

/// `list` with the group in it exactly when the user was chosen, under its present name.
std::string Aligned(const GroupName& group, std::string_view list, bool isChosen) {
  const std::string renamed =
      group.Before.empty() ? std::string(list) : ReplaceInList(list, group.Before, group.Now);
  if (!isChosen) return RemoveFromList(renamed, group.Now);
  return IsNameInList(renamed, group.Now) ? renamed : AppendToList(renamed, group.Now);
}

}  // namespace

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

Query<std::optional<bool>> IsPasswordOf(std::string_view loginName, std::string_view password) {
  return {Statement("SELECT Password FROM Calendars WHERE Name = '{}'", loginName),
          [password = std::string(password)](ResultSet& rows) {
            return FirstRow(rows, [&](const ResultSet& row) {
              const Value stored = row.Get(row.Column("Password"));
              return !IsNull(stored) && TextOf(stored) == password;
            });
          }};
}

void StorePassword(Connection& database, std::string_view loginName, std::string_view password) {
  database.TryExecute(
      Statement("UPDATE Calendars SET Password = '{}' WHERE Name = '{}'", password, loginName));
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

Query<std::vector<RecordChoice>> UserRecords() {
  return {Statement("SELECT CalendarID AS ID, FriendlyName AS PrettyName, Name AS IntName "
                    "FROM Calendars WHERE (IsGroup = no) ORDER BY FriendlyName"),
          RecordChoicesIn};
}

Query<std::vector<RecordChoice>> GroupRecords() {
  return {Statement("SELECT CalendarID AS ID, FriendlyName AS PrettyName, Name AS IntName "
                    "FROM Calendars WHERE (IsGroup = yes) ORDER BY FriendlyName"),
          RecordChoicesIn};
}

Query<std::vector<RecordChoice>> GroupsToChoose() {
  return {Statement("SELECT Name AS ID, FriendlyName AS PrettyName, Name AS IntName FROM Calendars "
                    "WHERE (IsGroup = yes) And (Name <> 'default')"),
          RecordChoicesIn};
}

Query<std::vector<RecordChoice>> UsersToChoose() {
  return {Statement("SELECT Name AS ID, FriendlyName AS PrettyName, Name AS IntName FROM Calendars "
                    "WHERE (IsGroup = no) And (Name <> 'admin') ORDER BY FriendlyName"),
          RecordChoicesIn};
}

Query<std::optional<CalendarRecord>> UserWithId(std::int64_t id) {
  return CalendarWithId(id, "no");
}

Query<std::optional<CalendarRecord>> GroupWithId(std::int64_t id) {
  return CalendarWithId(id, "yes");
}

Query<std::string> MemberListOf(std::string_view group) {
  return CalendarsNaming("MemberOfGroups", group);
}

Query<std::string> AdministratorListOf(std::string_view group) {
  return CalendarsNaming("AdminOfGroups", group);
}

Query<bool> IsCalendarNameTaken(std::string_view name, std::optional<std::int64_t> id) {
  Statement sql("SELECT CalendarID FROM Calendars WHERE Name = '{}'", name);
  if (id) sql.Add(" And CalendarID <> {}", *id);
  return {std::move(sql), [](ResultSet& rows) { return rows.Next(); }};
}

std::string UnusedCalendarName(Connection& database, std::string_view text) {
  return MakeInternalName(database, text, "CalendarID", "Calendars");
}

void SaveUser(Connection& database, std::optional<std::int64_t> id, const CalendarRecord& user) {
  SaveCalendar(database, id,
               {{"FriendlyName", SqlText(user.FriendlyName)},
                {"Name", SqlText(user.Name)},
                {"Password", SqlText(user.Password)},
                {"IsHidden", SqlValue(user.IsHidden ? "*yes" : "*no")},
                {"MemberOfGroups", SqlText(user.MemberOfGroups)},
                {"AdminOfGroups", SqlText(user.AdminOfGroups)}});
}

void SaveGroup(Connection& database, std::optional<std::int64_t> id, const CalendarRecord& group) {
  SaveCalendar(database, id,
               {{"FriendlyName", SqlText(group.FriendlyName)},
                {"Name", SqlText(group.Name)},
                {"IsHidden", SqlValue(group.IsHidden ? "*yes" : "*no")},
                {"IsGroup", SqlValue("*yes")}});
}

void DeleteCalendar(Connection& database, std::int64_t id) {
  database.Execute(Statement("DELETE FROM Calendars {}", WithId(id)));
}

void AlignGroupLists(Connection& database, const GroupName& group, std::string_view members,
                     std::string_view administrators) {
  const NameSet memberNames(members);
  const NameSet administratorNames(administrators);
  const Query<std::vector<UserLists>> allUsers(
      Statement("SELECT Name, MemberOfGroups, AdminOfGroups FROM Calendars "
                "WHERE (IsGroup = no) AND (Name <> 'admin')"),
      ReadUserLists);
  for (const UserLists& user : Ask(database, allUsers)) {
    StoreGroupLists(database, user,
                    {Aligned(group, user.Lists.MemberOf, memberNames.Contains(user.Name)),
                     Aligned(group, user.Lists.AdminOf, administratorNames.Contains(user.Name))});
  }
}

void RemoveFromGroupLists(Connection& database, std::string_view group) {
  const Query<std::vector<UserLists>> usersNaming(
      Statement("SELECT Name, MemberOfGroups, AdminOfGroups FROM Calendars WHERE "
                "(MemberOfGroups LIKE '%{}%' OR AdminOfGroups LIKE '%{}%') "
                "AND IsGroup = no",
                group, group),
      ReadUserLists);
  for (const UserLists& user : Ask(database, usersNaming)) {
    StoreGroupLists(database, user,
                    {RemoveFromList(user.Lists.MemberOf, group), RemoveFromList(user.Lists.AdminOf, group)});
  }
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
