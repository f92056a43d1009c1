#include "pages/admin/user_manager.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "base/lists.h"
#include "base/name_set.h"
#include "base/text.h"
#include "html/form_parts.h"
#include "pages/admin/calendar_record.h"
#include "pages/admin/field_rows.h"
#include "request/component_state.h"
#include "request/texts.h"
#include "store/field.h"

namespace orlune {
namespace {

constexpr RecordKind kUsers{730,
                            731,
                            732,
                            "SELECT CalendarID AS ID, FriendlyName AS PrettyName, Name AS IntName "
                            "FROM Calendars WHERE (IsGroup = no) ORDER BY FriendlyName",
                            "Calendars",
                            "CalendarID"};

constexpr SqlLiteral kOfferedGroups(
    "SELECT Name AS ID, FriendlyName AS PrettyName, Name AS IntName FROM Calendars "
    "WHERE (IsGroup = yes) And (Name <> 'default')");

bool IsAdministratorsRecord(const AdminState& record) {
  return record.StoredIntName == "admin";
}

bool HasFixedPassword(const ComponentState& state, const AdminState& record) {
  return state.DemoMode && IsAdministratorsRecord(record);
}

Html LoginNameRow(const ComponentState& state, const AdminState& record) {
  if (IsAdministratorsRecord(record))
    return FieldRow(state, 734, Html("admin{}", HiddenField("intname", "admin")));
  return FieldRow(state, 734, TextInput(state, "intname", record.IntName));
}

Html PasswordRow(const ComponentState& state, const AdminState& record) {
  if (HasFixedPassword(state, record)) {
    return Html(
        "<TR><TD>{}<BR>[changing disabled <BR>in demo version]</TD>"
        "<TD>demo1{}</TD></TR>",
        Content(LoadText(state, 735)), HiddenField("password", WithReferencesShown(record.Password)));
  }
  return FieldRow(state, 735,
                  Html("<INPUT TYPE=password NAME=\"password\" VALUE=\"{}\" SIZE={}>",
                       Attribute(WithReferencesShown(record.Password)), InputSize(state, 18, 38)));
}

Html GroupRows(const ComponentState& state, const AdminState& record) {
  if (IsAdministratorsRecord(record)) {
    const std::string_view all = LoadText(state, 738);
    return Html("{}{}", FixedChoiceRow(state, 736, "memberships", all),
                FixedChoiceRow(state, 737, "adminships", all));
  }
  return Html("{}{}", ChoiceRow(state, 736, "memberships", kOfferedGroups, NameSet(record.Memberships)),
              ChoiceRow(state, 737, "adminships", kOfferedGroups, NameSet(record.Adminships)));
}

void ValidateLoginName(ComponentState& state, const AdminState& record) {
  if (record.IntName.empty()) {
    AddAlert(state, 856);
  } else if (IsDigits(record.IntName)) {
    AddAlert(state, 862);
  } else if (!IsAlphanumeric(record.IntName)) {
    AddAlert(state, 857);
  } else if (IsNameTaken(state, record)) {
    AddAlert(state, 858, {record.IntName});
  }
}

void ValidatePassword(ComponentState& state, const AdminState& record) {
  if (record.Password.empty()) {
    AddAlert(state, 854);
  } else if (record.Password.find(' ') != std::string::npos) {
    AddAlert(state, 855);
  }
}

/// A group view's members with the colours at the same places, of which there may be fewer or more.
struct ViewMembers {
  std::vector<std::string> Calendars;
  std::vector<std::string> BackGround;
  std::vector<std::string> ForeGround;

  /// Whether `name` was a member.
  bool Remove(std::string_view name);
};

void EraseAt(std::vector<std::string>& items, std::size_t place) {
  if (place < items.size()) items.erase(items.begin() + static_cast<std::ptrdiff_t>(place));
}

bool ViewMembers::Remove(std::string_view name) {
  const std::size_t before = Calendars.size();
  for (std::size_t place = before; place-- > 0;) {
    if (!EqualIgnoringCase(Calendars[place], name)) continue;
    EraseAt(Calendars, place);
    EraseAt(BackGround, place);
    EraseAt(ForeGround, place);
  }
  return Calendars.size() != before;
}

void RemoveFromGroupViews(Connection& database, std::string_view name) {
  const auto rows =
      OpenQuery(database, Statement("SELECT Name, Calendars, Background, Foreground FROM GroupViews "
                                    "WHERE Calendars LIKE '%{}%'",
                                    name));
  const auto list = [&](std::string_view column) {
    return SplitList(TextOf(rows->Get(rows->Column(column))));
  };
  while (rows->Next()) {
    ViewMembers members{list("Calendars"), list("Background"), list("Foreground")};
    if (!members.Remove(name)) continue;
    const std::array<ColumnValue, 3> columns{{{"Calendars", SqlText(JoinList(members.Calendars))},
                                              {"BackGround", SqlText(JoinList(members.BackGround))},
                                              {"ForeGround", SqlText(JoinList(members.ForeGround))}}};
    const std::string_view view = TextOf(rows->Get(rows->Column("Name")));
    database.Execute(BuildSql(SqlMode::kUpdate, "GroupViews", columns, Statement("WHERE Name = '{}'", view)));
  }
}

}  // namespace

const RecordKind& UserManager::Kind() const {
  return kUsers;
}

bool UserManager::Load(const ComponentState& state, AdminState& record) const {
  return LoadCalendar(state, record, "no");
}

void UserManager::ReadForm(const ComponentState& state, AdminState& record) const {
  const Request& request = *state.Context.Request;
  record.Name = request.FormField("name");
  record.Hide = PostedHide(state, "no");
  if (!HasFixedPassword(state, record)) record.Password = request.FormField("password");
  if (IsAdministratorsRecord(record)) {
    record.Memberships.clear();
    record.Adminships.clear();
    return;
  }
  record.IntName = request.FormField("intname");
  record.Memberships = request.FormField("memberships");
  record.Adminships = request.FormField("adminships");
}

Html UserManager::FieldRows(const ComponentState& state, const AdminState& record) const {
  Html rows = FieldRow(state, 733, TextInput(state, "name", record.Name));
  rows.Add(LoginNameRow(state, record));
  rows.Add(PasswordRow(state, record));
  rows.Add(GroupRows(state, record));
  rows.Add(VisibilityRow(state, record.Hide.empty() ? "no" : record.Hide));
  return rows;
}

void UserManager::Validate(ComponentState& state, const AdminState& record) const {
  ValidateLoginName(state, record);
  ValidatePassword(state, record);
}

std::vector<ColumnValue> UserManager::Columns(const AdminState& record) const {
  std::vector<ColumnValue> columns{
      {"FriendlyName", SqlText(record.Name)},          {"Name", SqlText(record.IntName)},
      {"Password", SqlText(record.Password)},          {"IsHidden", SqlValue("*" + record.Hide)},
      {"MemberOfGroups", SqlText(record.Memberships)}, {"AdminOfGroups", SqlText(record.Adminships)}};
  if (record.Id.empty()) AddPreferenceDefaults(columns);
  return columns;
}

void UserManager::AfterSave(Connection& database, const AdminState& record) const {
  const std::string& before = record.StoredIntName;
  if (before.empty() || before == record.IntName) return;
  RenameCalendar(database, before, record.IntName);
  database.Execute(
      Statement("UPDATE Messages SET Sender = '{}' WHERE Sender = '{}'", record.IntName, before));
  database.Execute(
      Statement("UPDATE Messages SET Recipient = '{}' WHERE Recipient = '{}'", record.IntName, before));
}

void UserManager::AfterDelete(Connection& database, std::string_view name) const {
  if (name.empty()) return;
  database.Execute(Statement("DELETE FROM Events WHERE (Owner = '{}')", name));
  database.Execute(Statement("DELETE FROM Messages WHERE (Recipient = '{}')", name));
  database.Execute(Statement("DELETE FROM GroupViews WHERE (Owner = '{}')", name));
  RemoveFromGroupViews(database, name);
}

}  // namespace orlune
