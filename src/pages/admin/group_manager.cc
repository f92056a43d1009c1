#include "pages/admin/group_manager.h"

#include <string>
#include <tuple>

#include "base/name_set.h"
#include "html/form_parts.h"
#include "pages/admin/calendar_rules.h"
#include "pages/admin/field_rows.h"
#include "request/field_limits.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/calendar_cascades.h"
#include "store/calendar_records.h"

namespace orlune {
namespace {

constexpr RecordTexts kGroups{Text::kGroupsTitle, Text::kAllGroupsList, Text::kNewGroup};

bool IsEverybody(const AdminState& group) {
  return group.StoredIntName == "default";
}

Html UserRows(const PageContext& context, const AdminContent& content) {
  const AdminState& group = content.Record;
  if (IsEverybody(group)) {
    return Html(
        "{}{}",
        FixedChoiceRow(context, Text::kGroupMembers, "memberships", LoadText(context, Text::kAllUsers)),
        FixedChoiceRow(context, Text::kGroupAdministrators, "adminships", "admin"));
  }
  return Html(
      "{}{}",
      ChoiceRow(context, Text::kGroupMembers, "memberships", content.Choices, NameSet(group.Memberships)),
      ChoiceRow(context, Text::kGroupAdministrators, "adminships", content.Choices,
                NameSet(group.Adminships)));
}

}  // namespace

const RecordTexts& GroupManager::Texts() const {
  return kGroups;
}

Query<std::vector<RecordChoice>> GroupManager::Records() const {
  return GroupRecords();
}

Query<std::vector<RecordChoice>> GroupManager::Choices(const AdminState& record) const {
  return IsEverybody(record) ? Query<std::vector<RecordChoice>>() : UsersToChoose();
}

bool GroupManager::Load(Connection& database, AdminState& record) const {
  const auto stored = Ask(database, GroupWithId(record.Id.value()));
  if (!stored) return false;
  FillRecord(*stored, record);
  record.Memberships.clear();
  record.Adminships.clear();
  if (record.IntName.empty()) return true;
  std::tie(record.Memberships, record.Adminships) =
      Ask(database, MemberListOf(record.IntName), AdministratorListOf(record.IntName));
  return true;
}

void GroupManager::ReadForm(const Visit& visit, AdminState& record) const {
  const Request& request = visit.Request;
  record.Name = request.FormField("name");
  record.Hide = PostedHide(request, "yes");
  if (IsEverybody(record)) {
    record.Memberships.clear();
    record.Adminships.clear();
    return;
  }
  record.Memberships = request.FormField("memberships");
  record.Adminships = request.FormField("adminships");
  if (!record.Id) {
    record.IntName = UnusedCalendarName(visit.Database, record.Name);
  } else if (const auto intName = request.FormField("intname"); !intName.empty()) {
    record.IntName = intName;
  }
}

Html GroupManager::FieldRows(const PageContext& context, const AdminContent& content) const {
  const AdminState& record = content.Record;
  Html rows =
      FormRow(context, Text::kGroupName,
              Html("{}{}", TextInput(context, "name", record.Name), HiddenField("intname", record.IntName)));
  rows.Add(UserRows(context, content));
  rows.Add(VisibilityRow(context, record.Hide.empty() ? "yes" : record.Hide));
  return rows;
}

/// The form never changes a group's internal name, but a handmade request may: the new name must be free, and
/// usable in addresses.
void GroupManager::Validate(Visit& visit, const AdminState& record) const {
  CheckLengths(visit, {{Text::kGroupName, record.Name, 255, record.StoredName}});
  CheckTextLength(visit, Text::kGroupMembers, record.Memberships);
  CheckTextLength(visit, Text::kGroupAdministrators, record.Adminships);
  if (!record.Id || record.IntName == record.StoredIntName) return;
  CheckLengths(visit, {{Text::kGroupInternalName, record.IntName, 50, record.StoredIntName}});
  if (!IsAlphanumeric(record.IntName)) {
    AddAlert(visit, Text::kInternalNameNotAlphanumeric);
  } else if (IsNameTaken(visit.Database, record)) {
    AddAlert(visit, Text::kInternalNameTaken, {record.IntName});
  }
}

void GroupManager::Save(Visit& visit, AdminState& record) const {
  Connection& database = visit.Database;
  SaveGroup(database, record.Id, ToStore(record));
  const std::string& before = record.StoredIntName;
  if (record.IntName.empty()) return;
  if (!before.empty() && record.IntName != before) MoveCalendarContent(database, before, record.IntName);
  UpdateGroupLists(database, {before, record.IntName}, record.Memberships, record.Adminships);
}

void GroupManager::Delete(Connection& database, const AdminState& record) const {
  DeleteCalendar(database, record.Id.value());
  if (!record.StoredIntName.empty()) DeleteGroupContent(database, record.StoredIntName);
}

}  // namespace orlune
