#include "store/calendar_records.h"

#include <array>

#include "base/lists.h"
#include "base/name_set.h"
#include "store/database_access.h"
#include "store/rows.h"

namespace orlune {
namespace {

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

/// LIKE also matches parts of names, so each list is checked for the group as a whole item.
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

/// `list` with the group under its new name if the user was chosen, without the group otherwise.
std::string Updated(const GroupName& group, std::string_view list, bool isChosen) {
  const std::string renamed =
      group.Before.empty() ? std::string(list) : ReplaceInList(list, group.Before, group.Now);
  if (!isChosen) return RemoveFromList(renamed, group.Now);
  return IsNameInList(renamed, group.Now) ? renamed : AppendToList(renamed, group.Now);
}

}  // namespace

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

Query<std::optional<int>> CalendarIdOf(std::string_view name) {
  return {Statement("SELECT CalendarID FROM Calendars WHERE Name = '{}'", name), [](ResultSet& rows) {
            return rows.Next() ? NumberOf(rows.Get(rows.Column("CalendarID"))) : std::nullopt;
          }};
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

void UpdateGroupLists(Connection& database, const GroupName& group, std::string_view members,
                      std::string_view administrators) {
  const NameSet memberNames(members);
  const NameSet administratorNames(administrators);
  const Query<std::vector<UserLists>> allUsers(
      Statement("SELECT Name, MemberOfGroups, AdminOfGroups FROM Calendars "
                "WHERE (IsGroup = no) AND (Name <> 'admin')"),
      ReadUserLists);
  for (const UserLists& user : Ask(database, allUsers)) {
    StoreGroupLists(database, user,
                    {Updated(group, user.Lists.MemberOf, memberNames.Contains(user.Name)),
                     Updated(group, user.Lists.AdminOf, administratorNames.Contains(user.Name))});
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

}  // namespace orlune
