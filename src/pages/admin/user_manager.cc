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
#include "request/texts.h"
#include "request/visit.h"
#include "store/field.h"

namespace orlune {
namespace {

constexpr RecordKind kUsers{Text::kUsersTitle,
                            Text::kAllUsersList,
                            Text::kNewUser,
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

bool HasFixedPassword(const Visit& visit, const AdminState& record) {
  return visit.Context.Hosting.DemoMode && IsAdministratorsRecord(record);
}

Html LoginNameRow(const Visit& visit, const AdminState& record) {
  if (IsAdministratorsRecord(record))
    return FieldRow(visit, Text::kUserLoginName, Html("admin{}", HiddenField("intname", "admin")));
  return FieldRow(visit, Text::kUserLoginName, TextInput(visit, "intname", record.IntName));
}

Html PasswordRow(const Visit& visit, const AdminState& record) {
  if (HasFixedPassword(visit, record)) {
    return Html(
        "<TR><TD>{}<BR>[changing disabled <BR>in demo version]</TD>"
        "<TD>demo1{}</TD></TR>",
        Content(LoadText(visit, Text::kUserPassword)),
        HiddenField("password", WithReferencesShown(record.Password)));
  }
  return FieldRow(visit, Text::kUserPassword,
                  Html("<INPUT TYPE=password NAME=\"password\" VALUE=\"{}\" SIZE={}>",
                       Attribute(WithReferencesShown(record.Password)), InputSize(visit, 18, 38)));
}

Html GroupRows(const Visit& visit, const AdminState& record) {
  if (IsAdministratorsRecord(record)) {
    const std::string_view all = LoadText(visit, Text::kAllGroups);
    return Html("{}{}", FixedChoiceRow(visit, Text::kUserMemberships, "memberships", all),
                FixedChoiceRow(visit, Text::kUserAdminships, "adminships", all));
  }
  return Html(
      "{}{}",
      ChoiceRow(visit, Text::kUserMemberships, "memberships", kOfferedGroups, NameSet(record.Memberships)),
      ChoiceRow(visit, Text::kUserAdminships, "adminships", kOfferedGroups, NameSet(record.Adminships)));
}

void ValidateLoginName(Visit& visit, const AdminState& record) {
  if (record.IntName.empty()) {
    AddAlert(visit, Text::kLoginNameMissing);
  } else if (IsDigits(record.IntName)) {
    AddAlert(visit, Text::kLoginNameWithoutLetters);
  } else if (!IsAlphanumeric(record.IntName)) {
    AddAlert(visit, Text::kLoginNameNotAlphanumeric);
  } else if (IsNameTaken(visit, record)) {
    AddAlert(visit, Text::kLoginNameTaken, {record.IntName});
  }
}

void ValidatePassword(Visit& visit, const AdminState& record) {
  if (record.Password.empty()) {
    AddAlert(visit, Text::kPasswordMissing);
  } else if (record.Password.find(' ') != std::string::npos) {
    AddAlert(visit, Text::kPasswordHasSpaces);
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

bool UserManager::Load(const Visit& visit, AdminState& record) const {
  return LoadCalendar(visit, record, "no");
}

void UserManager::ReadForm(const Visit& visit, AdminState& record) const {
  const Request& request = visit.Request;
  record.Name = request.FormField("name");
  record.Hide = PostedHide(visit, "no");
  if (!HasFixedPassword(visit, record)) record.Password = request.FormField("password");
  if (IsAdministratorsRecord(record)) {
    record.Memberships.clear();
    record.Adminships.clear();
    return;
  }
  record.IntName = request.FormField("intname");
  record.Memberships = request.FormField("memberships");
  record.Adminships = request.FormField("adminships");
}

Html UserManager::FieldRows(const Visit& visit, const AdminState& record) const {
  Html rows = FieldRow(visit, Text::kUserName, TextInput(visit, "name", record.Name));
  rows.Add(LoginNameRow(visit, record));
  rows.Add(PasswordRow(visit, record));
  rows.Add(GroupRows(visit, record));
  rows.Add(VisibilityRow(visit, record.Hide.empty() ? "no" : record.Hide));
  return rows;
}

void UserManager::Validate(Visit& visit, const AdminState& record) const {
  ValidateLoginName(visit, record);
  ValidatePassword(visit, record);
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
