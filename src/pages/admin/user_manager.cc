#include "pages/admin/user_manager.h"

#include <string>

#include "base/name_set.h"
#include "base/text.h"
#include "html/form_parts.h"
#include "pages/admin/calendar_rules.h"
#include "pages/admin/field_rows.h"
#include "request/field_limits.h"
#include "request/login_stamp.h"
#include "request/password_check.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/calendar_cascades.h"
#include "store/calendar_records.h"

namespace orlune {
namespace {

constexpr RecordTexts kUsers{Text::kUsersTitle, Text::kAllUsersList, Text::kNewUser};

bool IsAdministratorsRecord(const AdminState& record) {
  return record.StoredIntName == "admin";
}

bool HasFixedPassword(const PageContext& context, const AdminState& record) {
  return context.Hosting.DemoMode && IsAdministratorsRecord(record);
}

/// A strict page shows no password, neither a stored nor a typed one.
std::string_view ShownPassword(const PageContext& context, const AdminState& record) {
  return context.Hosting.Strict ? std::string_view() : record.Password;
}

Html LoginNameRow(const PageContext& context, const AdminState& record) {
  if (IsAdministratorsRecord(record))
    return FormRow(context, Text::kUserLoginName, Html("admin{}", HiddenField("intname", "admin")));
  return FormRow(context, Text::kUserLoginName, TextInput(context, "intname", record.IntName));
}

Html PasswordRow(const PageContext& context, const AdminState& record) {
  if (HasFixedPassword(context, record)) {
    return Html(
        "<TR><TD>{}<BR>[changing disabled <BR>in demo version]</TD>"
        "<TD>demo1{}</TD></TR>",
        Content(LoadText(context, Text::kUserPassword)),
        HiddenField("password", WithReferencesShown(ShownPassword(context, record))));
  }
  return FormRow(
      context, Text::kUserPassword,
      Html("<INPUT TYPE=password NAME=\"password\" VALUE=\"{}\" SIZE={}>",
           Attribute(WithReferencesShown(ShownPassword(context, record))), InputSize(context, 18, 38)));
}

Html GeneratedPasswordRow(const PageContext& context, const AdminState& record) {
  if (record.GeneratedPassword.empty()) return {};
  return Html("<TR><TD COLSPAN=2>{} <B>{}</B></TD></TR>",
              Content(LoadText(context, Text::kGeneratedPassword, {record.IntName})),
              Content(record.GeneratedPassword));
}

Html GroupRows(const PageContext& context, const AdminContent& content) {
  const AdminState& record = content.Record;
  if (IsAdministratorsRecord(record)) {
    const std::string_view all = LoadText(context, Text::kAllGroups);
    return Html("{}{}", FixedChoiceRow(context, Text::kUserMemberships, "memberships", all),
                FixedChoiceRow(context, Text::kUserAdminships, "adminships", all));
  }
  return Html(
      "{}{}",
      ChoiceRow(context, Text::kUserMemberships, "memberships", content.Choices, NameSet(record.Memberships)),
      ChoiceRow(context, Text::kUserAdminships, "adminships", content.Choices, NameSet(record.Adminships)));
}

void ValidateLoginName(Visit& visit, const AdminState& record) {
  if (record.IntName.empty()) {
    AddAlert(visit, Text::kLoginNameMissing);
  } else if (IsDigits(record.IntName)) {
    AddAlert(visit, Text::kLoginNameWithoutLetters);
  } else if (!IsAlphanumeric(record.IntName)) {
    AddAlert(visit, Text::kLoginNameNotAlphanumeric);
  } else if (IsNameTaken(visit.Database, record)) {
    AddAlert(visit, Text::kLoginNameTaken, {record.IntName});
  }
}

void ValidatePassword(Visit& visit, const AdminState& record) {
  if (record.Password.empty()) {
    if (!visit.Context.Hosting.Strict) AddAlert(visit, Text::kPasswordMissing);
  } else if (record.Password.find(' ') != std::string::npos) {
    AddAlert(visit, Text::kPasswordHasSpaces);
  }
}

/// On a strict page, where an empty field keeps the stored password, or asks for a random one.
std::string StrictPassword(Visit& visit, AdminState& record) {
  if (record.Password.empty() && record.Id) return record.StoredPassword;
  if (record.Password.empty()) record.Password = record.GeneratedPassword = visit.Passwords.MakeRandom();
  return PasswordToStore(visit, record.Password);
}

}  // namespace

const RecordTexts& UserManager::Texts() const {
  return kUsers;
}

Query<std::vector<RecordChoice>> UserManager::Records() const {
  return UserRecords();
}

Query<std::vector<RecordChoice>> UserManager::Choices(const AdminState& record) const {
  return IsAdministratorsRecord(record) ? Query<std::vector<RecordChoice>>() : GroupsToChoose();
}

bool UserManager::Load(Connection& database, AdminState& record) const {
  const auto stored = Ask(database, UserWithId(record.Id.value()));
  if (stored) FillRecord(*stored, record);
  return stored.has_value();
}

void UserManager::ReadForm(const Visit& visit, AdminState& record) const {
  const Request& request = visit.Request;
  record.Name = request.FormField("name");
  record.Hide = PostedHide(request, "no");
  const bool isFixed = HasFixedPassword(visit.Context, record);
  if (!isFixed || visit.Context.Hosting.Strict)
    record.Password = isFixed ? std::string_view() : request.FormField("password");
  if (IsAdministratorsRecord(record)) {
    record.Memberships.clear();
    record.Adminships.clear();
    return;
  }
  record.IntName = request.FormField("intname");
  record.Memberships = request.FormField("memberships");
  record.Adminships = request.FormField("adminships");
}

Html UserManager::FieldRows(const PageContext& context, const AdminContent& content) const {
  const AdminState& record = content.Record;
  Html rows = FormRow(context, Text::kUserName, TextInput(context, "name", record.Name));
  rows.Add(LoginNameRow(context, record));
  rows.Add(PasswordRow(context, record));
  rows.Add(GeneratedPasswordRow(context, record));
  rows.Add(GroupRows(context, content));
  rows.Add(VisibilityRow(context, record.Hide.empty() ? "no" : record.Hide));
  return rows;
}

void UserManager::Validate(Visit& visit, const AdminState& record) const {
  ValidateLoginName(visit, record);
  ValidatePassword(visit, record);
  CheckLengths(visit, {{Text::kUserName, record.Name, 255, record.StoredName},
                       {Text::kUserLoginName, record.IntName, 50, record.StoredIntName},
                       {Text::kUserPassword, record.Password, 255, record.StoredPassword}});
  CheckTextLength(visit, Text::kUserMemberships, record.Memberships);
  CheckTextLength(visit, Text::kUserAdminships, record.Adminships);
}

void UserManager::Save(Visit& visit, AdminState& record) const {
  CalendarRecord user = ToStore(record);
  if (visit.Context.Hosting.Strict) user.Password = StrictPassword(visit, record);
  SaveUser(visit.Database, record.Id, user);
  const std::string& before = record.StoredIntName;
  if (!before.empty() && before != record.IntName) MoveUserContent(visit.Database, before, record.IntName);
  if (before == visit.Context.Visitor.LoginName) KeepOwnLogin(visit);
  if (record.Id) return;
  record.Id = Ask(visit.Database, CalendarIdOf(record.IntName));
  record.StoredIntName = record.IntName;
}

void UserManager::Delete(Connection& database, const AdminState& record) const {
  DeleteCalendar(database, record.Id.value());
  if (!record.StoredIntName.empty()) DeleteUserContent(database, record.StoredIntName);
}

}  // namespace orlune
