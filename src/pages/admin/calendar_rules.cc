#include "pages/admin/calendar_rules.h"

#include <algorithm>

#include "store/calendar_records.h"

namespace orlune {

void FillRecord(const CalendarRecord& stored, AdminState& record) {
  record.Name = stored.FriendlyName;
  record.IntName = record.StoredIntName = stored.Name;
  record.Password = record.StoredPassword = stored.Password;
  record.Memberships = stored.MemberOfGroups;
  record.Adminships = stored.AdminOfGroups;
  record.Hide = stored.IsHidden ? "yes" : "no";
}

CalendarRecord ToStore(const AdminState& record) {
  return {record.Name,        record.IntName,    record.Password,
          record.Memberships, record.Adminships, record.Hide == "yes"};
}

std::string_view PostedHide(const Request& request, std::string_view otherwise) {
  const std::string_view hide = request.FormField("hide");
  return hide == "yes" || hide == "no" ? hide : otherwise;
}

bool IsAlphanumeric(std::string_view name) {
  return std::all_of(name.begin(), name.end(), [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
  });
}

bool IsNameTaken(Connection& database, const AdminState& record) {
  return Ask(database, IsCalendarNameTaken(record.IntName, record.Id));
}

}  // namespace orlune
