#include "store/group_views.h"

#include "base/lists.h"
#include "store/database_access.h"
#include "store/rows.h"

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

}  // namespace orlune
