#include "store/group_views.h"

#include <array>
#include <utility>

#include "base/lists.h"
#include "base/text.h"
#include "store/database_access.h"
#include "store/rows.h"
#include "store/transaction.h"

namespace orlune {
namespace {

GroupViewMembers ReadMembers(ResultSet& rows) {
  if (!rows.Next()) return {};
  const auto list = [&](std::string_view column) { return SplitList(TextOf(rows.Get(rows.Column(column)))); };
  return {list("Calendars"), list("Background"), list("Foreground")};
}

}  // namespace

Query<bool> GroupViewExists(std::string_view name) {
  return {NameQuery("Name", "GroupViews", name), [](ResultSet& rows) { return rows.Next(); }};
}

Query<std::vector<std::string>> MemberNamesOf(std::string_view name) {
  return {Statement("SELECT Calendars FROM GroupViews WHERE Name = '{}'", name), [](ResultSet& rows) {
            return rows.Next() ? SplitList(TextOf(rows.Get(rows.Column("Calendars"))))
                               : std::vector<std::string>();
          }};
}

Query<GroupViewMembers> MembersOf(std::string_view name) {
  return {Statement("SELECT Calendars, Background, Foreground FROM GroupViews WHERE Name = '{}'", name),
          ReadMembers};
}

Query<std::optional<std::string>> GroupViewTitle(std::string_view name) {
  return {Statement("SELECT FriendlyName FROM GroupViews WHERE Name = '{}'", name), [](ResultSet& rows) {
            return FirstRow(rows, [](const ResultSet& row) { return TextIn(row, "FriendlyName"); });
          }};
}

Query<std::vector<GroupViewChoice>> GroupViewsVisibleTo(std::string_view loginName) {
  return {Statement("SELECT Name, FriendlyName, Calendars FROM GroupViews "
                    "WHERE (Owner = '{}' OR Owner = 'admin') ORDER BY FriendlyName",
                    loginName),
          [](ResultSet& rows) {
            const int name = rows.Column("Name");
            const int friendlyName = rows.Column("FriendlyName");
            std::vector<GroupViewChoice> views;
            while (rows.Next()) {
              views.push_back(
                  {0, std::string(TextOf(rows.Get(name))), std::string(TextOf(rows.Get(friendlyName)))});
            }
            return views;
          }};
}

namespace {

/// The columns that a form changes, all but the owner.
std::vector<ColumnValue> ChangedColumns(const GroupView& view) {
  return {{"Name", SqlText(view.Name)},
          {"FriendlyName", SqlText(ReplaceAll(view.FriendlyName, "'", "&#39;"))},
          {"Calendars", SqlText(JoinList(view.Members.Calendars))},
          {"BackGround", SqlText(JoinList(view.Members.BackGround))},
          {"ForeGround", SqlText(JoinList(view.Members.ForeGround))}};
}

Query<int> IdOfGroupView(std::string_view name) {
  return {Statement("SELECT GroupID FROM GroupViews WHERE Name = '{}'", name), [](ResultSet& rows) {
            return rows.Next() ? NumberOf(rows.Get(rows.Column("GroupID"))).value_or(0) : 0;
          }};
}

/// Unlike `SplitList`, gives no item for an empty text.
std::vector<std::string> ItemsIn(const ResultSet& row, std::string_view column) {
  const std::string_view text = TextOf(row.Get(row.Column(column)));
  return text.empty() ? std::vector<std::string>() : SplitList(text);
}

/// The members of one view, by its internal name.
struct NamedMembers {
  std::string Name;
  GroupViewMembers Members;
};

/// The lists of calendars, by the internal names of their views.
using ListsOfCalendars = std::vector<std::pair<std::string, std::string>>;

Query<ListsOfCalendars> ListsNaming(std::string_view calendar) {
  return {Statement("SELECT Name, Calendars FROM GroupViews WHERE Calendars LIKE '%{}%'", calendar),
          [](ResultSet& rows) {
            ListsOfCalendars lists;
            while (rows.Next()) lists.emplace_back(TextIn(rows, "Name"), TextIn(rows, "Calendars"));
            return lists;
          }};
}

Query<std::vector<NamedMembers>> MembersNaming(std::string_view calendar) {
  return {Statement("SELECT Name, Calendars, Background, Foreground FROM GroupViews "
                    "WHERE Calendars LIKE '%{}%'",
                    calendar),
          [](ResultSet& rows) {
            const auto list = [&](std::string_view column) {
              return SplitList(TextOf(rows.Get(rows.Column(column))));
            };
            std::vector<NamedMembers> views;
            while (rows.Next()) {
              views.push_back(
                  {TextIn(rows, "Name"), {list("Calendars"), list("Background"), list("Foreground")}});
            }
            return views;
          }};
}

}  // namespace

Query<std::vector<GroupViewChoice>> GroupViewsOwnedBy(std::string_view loginName) {
  return {Statement("SELECT GroupID, Name, FriendlyName FROM GroupViews "
                    "WHERE (Owner = '{}') ORDER BY FriendlyName",
                    loginName),
          [](ResultSet& rows) {
            const int id = rows.Column("GroupID");
            std::vector<GroupViewChoice> views;
            while (rows.Next()) {
              views.push_back(
                  {NumberOf(rows.Get(id)).value_or(0), TextIn(rows, "Name"), TextIn(rows, "FriendlyName")});
            }
            return views;
          }};
}

Query<std::optional<GroupView>> GroupViewWithId(int id) {
  const auto read = [id](const ResultSet& row) {
    return GroupView{id,
                     TextIn(row, "Owner"),
                     TextIn(row, "Name"),
                     TextIn(row, "FriendlyName"),
                     {ItemsIn(row, "Calendars"), ItemsIn(row, "BackGround"), ItemsIn(row, "ForeGround")}};
  };
  return {Statement("SELECT Owner, Name, FriendlyName, Calendars, BackGround, ForeGround "
                    "FROM GroupViews WHERE GroupID = {}",
                    id),
          [read](ResultSet& rows) { return FirstRow(rows, read); }};
}

std::string UnusedGroupViewName(Connection& database, std::string_view text) {
  return MakeInternalName(database, text, "GroupID", "GroupViews");
}

int StoreGroupView(Connection& database, GroupView view) {
  if (view.Id) {
    database.Execute(BuildSql(SqlMode::kUpdate, "GroupViews", ChangedColumns(view),
                              Statement("WHERE GroupID = {}", *view.Id)));
    return *view.Id;
  }
  Transaction transaction(database);
  view.Name = UnusedGroupViewName(database, view.Name);
  std::vector<ColumnValue> columns = ChangedColumns(view);
  columns.insert(columns.begin(), {"Owner", SqlText(view.Owner)});
  database.Execute(BuildSql(SqlMode::kInsert, "GroupViews", columns));
  const int id = Ask(database, IdOfGroupView(view.Name));
  transaction.Commit();
  return id;
}

void DeleteGroupView(Connection& database, int id) {
  database.Execute(Statement("DELETE FROM GroupViews WHERE GroupID = {}", id));
}

void RenameInGroupViews(Connection& database, std::string_view oldName, std::string_view newName) {
  database.Execute(Statement("UPDATE GroupViews SET Owner = '{}' WHERE Owner = '{}'", newName, oldName));
  for (const auto& [view, before] : Ask(database, ListsNaming(oldName))) {
    const std::string after = ReplaceInList(before, oldName, newName);
    if (after == before) continue;
    database.Execute(Statement("UPDATE GroupViews SET Calendars = '{}' WHERE Name = '{}'", after, view));
  }
}

void RemoveFromGroupViews(Connection& database, std::string_view name) {
  database.Execute(Statement("DELETE FROM GroupViews WHERE (Owner = '{}')", name));
  for (NamedMembers& view : Ask(database, MembersNaming(name))) {
    GroupViewMembers& members = view.Members;
    if (!members.Remove(name)) continue;
    const std::array<ColumnValue, 3> columns{{{"Calendars", SqlText(JoinList(members.Calendars))},
                                              {"BackGround", SqlText(JoinList(members.BackGround))},
                                              {"ForeGround", SqlText(JoinList(members.ForeGround))}}};
    database.Execute(
        BuildSql(SqlMode::kUpdate, "GroupViews", columns, Statement("WHERE Name = '{}'", view.Name)));
  }
}

}  // namespace orlune
