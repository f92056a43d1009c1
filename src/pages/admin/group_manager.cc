#include "pages/admin/group_manager.h"

#include <array>
#include <string>

#include "base/lists.h"
#include "base/name_set.h"
#include "html/form_parts.h"
#include "pages/admin/calendar_record.h"
#include "pages/admin/field_rows.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/field.h"

namespace orlune {
namespace {

constexpr RecordKind kGroups{Text::kGroupsTitle,
                             Text::kAllGroupsList,
                             Text::kNewGroup,
                             "SELECT CalendarID AS ID, FriendlyName AS PrettyName, Name AS IntName "
                             "FROM Calendars WHERE (IsGroup = yes) ORDER BY FriendlyName",
                             "Calendars",
                             "CalendarID"};

constexpr SqlLiteral kOfferedUsers(
    "SELECT Name AS ID, FriendlyName AS PrettyName, Name AS IntName FROM Calendars "
    "WHERE (IsGroup = no) And (Name <> 'admin') ORDER BY FriendlyName");

bool IsEverybody(const AdminState& group) {
  return group.StoredIntName == "default";
}

/// The calendars whose list in `column` holds the group as a whole item, joined with ", ".
std::string CalendarsNaming(Connection& database, SqlLiteral column, std::string_view group) {
  const auto rows = OpenQuery(
      database, Statement("SELECT Name, {} FROM Calendars WHERE ({} LIKE '%{}%')", column, column, group));
  const int name = rows->Column("Name");
  const int groups = rows->Column(column.Text());
  std::string names;
  while (rows->Next()) {
    if (!IsNameInList(TextOf(rows->Get(groups)), group)) continue;
    if (!names.empty()) names += ", ";
    names += TextOf(rows->Get(name));
  }
  return names;
}

Html UserRows(const Visit& visit, const AdminState& group) {
  if (IsEverybody(group)) {
    return Html("{}{}",
                FixedChoiceRow(visit, Text::kGroupMembers, "memberships", LoadText(visit, Text::kAllUsers)),
                FixedChoiceRow(visit, Text::kGroupAdministrators, "adminships", "admin"));
  }
  return Html(
      "{}{}", ChoiceRow(visit, Text::kGroupMembers, "memberships", kOfferedUsers, NameSet(group.Memberships)),
      ChoiceRow(visit, Text::kGroupAdministrators, "adminships", kOfferedUsers, NameSet(group.Adminships)));
}

/// A user's two lists of groups.
struct GroupLists {
  std::string MemberOf;
  std::string AdminOf;

  friend bool operator==(const GroupLists&, const GroupLists&) = default;
};

/// Replaces the lists of each user of `rows` by what `change(name, lists)` returns.
template <class Change>
void ChangeGroupLists(Connection& database, ResultSet& rows, Change change) {
  const int nameColumn = rows.Column("Name");
  const int memberOf = rows.Column("MemberOfGroups");
  const int adminOf = rows.Column("AdminOfGroups");
  while (rows.Next()) {
    const std::string_view name = TextOf(rows.Get(nameColumn));
    const GroupLists before{std::string(TextOf(rows.Get(memberOf))), std::string(TextOf(rows.Get(adminOf)))};
    const GroupLists after = change(name, before);
    if (after == before) continue;
    const std::array<ColumnValue, 2> columns{
        {{"MemberOfGroups", SqlText(after.MemberOf)}, {"AdminOfGroups", SqlText(after.AdminOf)}}};
    database.Execute(BuildSql(SqlMode::kUpdate, "Calendars", columns, Statement("WHERE Name = '{}'", name)));
  }
}

/// `list` with the group in it exactly when the user was chosen, under its present name.
std::string Aligned(const AdminState& group, std::string_view list, bool isChosen) {
  const std::string renamed = group.StoredIntName.empty()
                                  ? std::string(list)
                                  : ReplaceInList(list, group.StoredIntName, group.IntName);
  if (!isChosen) return RemoveFromList(renamed, group.IntName);
  return IsNameInList(renamed, group.IntName) ? renamed : AppendToList(renamed, group.IntName);
}

void AlignUsers(Connection& database, const AdminState& group) {
  const NameSet members(group.Memberships);
  const NameSet administrators(group.Adminships);
  const auto rows = OpenQuery(database, Statement("SELECT Name, MemberOfGroups, AdminOfGroups FROM Calendars "
                                                  "WHERE (IsGroup = no) AND (Name <> 'admin')"));
  ChangeGroupLists(database, *rows, [&](std::string_view user, const GroupLists& lists) {
    return GroupLists{Aligned(group, lists.MemberOf, members.Contains(user)),
                      Aligned(group, lists.AdminOf, administrators.Contains(user))};
  });
}

}  // namespace

const RecordKind& GroupManager::Kind() const {
  return kGroups;
}

bool GroupManager::Load(const Visit& visit, AdminState& record) const {
  if (!LoadCalendar(visit, record, "yes")) return false;
  record.Memberships.clear();
  record.Adminships.clear();
  if (record.IntName.empty()) return true;
  record.Memberships = CalendarsNaming(visit.Database, "MemberOfGroups", record.IntName);
  record.Adminships = CalendarsNaming(visit.Database, "AdminOfGroups", record.IntName);
  return true;
}

void GroupManager::ReadForm(const Visit& visit, AdminState& record) const {
  const Request& request = visit.Request;
  record.Name = request.FormField("name");
  record.Hide = PostedHide(visit, "yes");
  if (IsEverybody(record)) {
    record.Memberships.clear();
    record.Adminships.clear();
    return;
  }
  record.Memberships = request.FormField("memberships");
  record.Adminships = request.FormField("adminships");
  if (record.Id.empty()) {
    record.IntName = MakeInternalName(visit.Database, record.Name, "CalendarID", "Calendars");
  } else if (const auto intName = request.FormField("intname"); !intName.empty()) {
    record.IntName = intName;
  }
}

Html GroupManager::FieldRows(const Visit& visit, const AdminState& record) const {
  Html rows =
      FieldRow(visit, Text::kGroupName,
               Html("{}{}", TextInput(visit, "name", record.Name), HiddenField("intname", record.IntName)));
  rows.Add(UserRows(visit, record));
  rows.Add(VisibilityRow(visit, record.Hide.empty() ? "yes" : record.Hide));
  return rows;
}

/// The form never changes a group's internal name. A request that does may give it no name that another
/// calendar has or that pages cannot address.
void GroupManager::Validate(Visit& visit, const AdminState& record) const {
  if (record.Id.empty() || record.IntName == record.StoredIntName) return;
  if (!IsAlphanumeric(record.IntName)) {
    AddAlert(visit, Text::kInternalNameNotAlphanumeric);
  } else if (IsNameTaken(visit, record)) {
    AddAlert(visit, Text::kInternalNameTaken, {record.IntName});
  }
}

std::vector<ColumnValue> GroupManager::Columns(const AdminState& record) const {
  std::vector<ColumnValue> columns{{"FriendlyName", SqlText(record.Name)},
                                   {"Name", SqlText(record.IntName)},
                                   {"IsHidden", SqlValue("*" + record.Hide)},
                                   {"IsGroup", SqlValue("*yes")}};
  if (record.Id.empty()) AddPreferenceDefaults(columns);
  return columns;
}

void GroupManager::AfterSave(Connection& database, const AdminState& record) const {
  if (record.IntName.empty()) return;
  if (record.IntName != record.StoredIntName) RenameCalendar(database, record.StoredIntName, record.IntName);
  AlignUsers(database, record);
}

void GroupManager::AfterDelete(Connection& database, std::string_view name) const {
  if (name.empty()) return;
  database.Execute(Statement("DELETE FROM Events WHERE (Owner = '{}')", name));
  const auto rows =
      OpenQuery(database, Statement("SELECT Name, MemberOfGroups, AdminOfGroups FROM Calendars WHERE "
                                    "(MemberOfGroups LIKE '%{}%' OR AdminOfGroups LIKE '%{}%') "
                                    "AND IsGroup = no",
                                    name, name));
  ChangeGroupLists(database, *rows, [&](std::string_view /*user*/, const GroupLists& lists) {
    return GroupLists{RemoveFromList(lists.MemberOf, name), RemoveFromList(lists.AdminOf, name)};
  });
}

}  // namespace orlune
