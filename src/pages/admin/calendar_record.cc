#include "pages/admin/calendar_record.h"

#include <algorithm>
#include <string>

#include "base/lists.h"
#include "request/visit.h"
#include "store/field.h"

namespace orlune {
namespace {

void RenameInGroupViews(Connection& database, std::string_view oldName, std::string_view newName) {
  const auto rows = OpenQuery(
      database, Statement("SELECT Name, Calendars FROM GroupViews WHERE Calendars LIKE '%{}%'", oldName));
  const int view = rows->Column("Name");
  const int calendars = rows->Column("Calendars");
  while (rows->Next()) {
    const std::string_view before = TextOf(rows->Get(calendars));
    const std::string after = ReplaceInList(before, oldName, newName);
    if (after == before) continue;
    database.Execute(Statement("UPDATE GroupViews SET Calendars = '{}' WHERE Name = '{}'", after,
                               TextOf(rows->Get(view))));
  }
}

}  // namespace

bool LoadCalendar(const Visit& visit, AdminState& record, SqlLiteral isGroup) {
  const auto row = OpenQuery(visit.Database,
                             Statement("SELECT FriendlyName, Name, Password, MemberOfGroups, AdminOfGroups, "
                                       "IsHidden FROM Calendars WHERE (CalendarID = {}) AND (IsGroup = {})",
                                       record.Id, isGroup));
  if (!row->Next()) return false;
  const auto text = [&](std::string_view column) {
    return std::string(TextOf(row->Get(row->Column(column))));
  };
  record.Name = text("FriendlyName");
  record.IntName = record.StoredIntName = text("Name");
  record.Password = text("Password");
  record.Memberships = text("MemberOfGroups");
  record.Adminships = text("AdminOfGroups");
  record.Hide = YesNoOf(row->Get(row->Column("IsHidden"))) ? "yes" : "no";
  return true;
}

std::string_view PostedHide(const Visit& visit, std::string_view otherwise) {
  const std::string_view hide = visit.Request.FormField("hide");
  return hide == "yes" || hide == "no" ? hide : otherwise;
}

bool IsAlphanumeric(std::string_view name) {
  return std::all_of(name.begin(), name.end(), [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
  });
}

bool IsNameTaken(const Visit& visit, const AdminState& record) {
  Statement sql("SELECT CalendarID FROM Calendars WHERE Name = '{}'", record.IntName);
  if (!record.Id.empty()) sql.Add(" And CalendarID <> {}", record.Id);
  return OpenQuery(visit.Database, sql)->Next();
}

void AddPreferenceDefaults(std::vector<ColumnValue>& columns) {
  columns.push_back({"ClockMode", SqlValue("*24")});
  columns.push_back({"FirstDayOfWeek", SqlValue("*2")});
  columns.push_back({"Weekend", SqlValue("1, 7")});
}

void RenameCalendar(Connection& database, std::string_view oldName, std::string_view newName) {
  if (oldName.empty()) return;
  database.Execute(Statement("UPDATE Events SET Owner = '{}' WHERE Owner = '{}'", newName, oldName));
  database.Execute(Statement("UPDATE GroupViews SET Owner = '{}' WHERE Owner = '{}'", newName, oldName));
  RenameInGroupViews(database, oldName, newName);
}

}  // namespace orlune
