#include "commands/calendar_names.h"

#include "base/text.h"
#include "commands/table_scan.h"

namespace orlune {
namespace {

constexpr FindingKind kNameless{
    "Calendars have no name",
    "nobody can log in to them or see them; delete these rows, or copy back an older database"};
constexpr FindingKind kDoubled{"Names of calendars are there twice, whatever their case",
                               "pages find only one of them; rename or delete the other in Administration"};
constexpr FindingKind kWithoutAdmin{
    "There is no user 'admin'",
    "nobody can administer the calendar, and pages without a login lack settings; restore a backup"};
constexpr FindingKind kWithoutDefault{"There is no group 'default'",
                                      "events for everybody have no place; restore a backup, or copy the "
                                      "rows to a database of \"orlune init\""};

std::string Quote(std::string_view name) {
  return '"' + std::string(name) + '"';
}

}  // namespace

CalendarNames::CalendarNames(DatabaseMaintenance& database, const dialect::Table& calendars,
                             Findings& findings) {
  TableScan row(database, calendars);
  const int name = row.Column("Name");
  const int group = row.Column("IsGroup");
  while (row.Next()) {
    const std::string place = "calendar " + std::to_string(row.Number());
    if (row.Text(name).empty()) {
      findings.Add(kNameless, place);
    } else if (!isGroup_.emplace(ToLower(row.Text(name)), row.YesNo(group)).second) {
      findings.Add(kDoubled, place + ", " + Quote(row.Text(name)));
    }
  }
  if (!Contains("admin") || IsGroup("admin")) findings.Add(kWithoutAdmin, "admin");
  if (!IsGroup("default")) findings.Add(kWithoutDefault, "default");
}

bool CalendarNames::Contains(std::string_view name) const {
  return isGroup_.contains(ToLower(name));
}

bool CalendarNames::IsGroup(std::string_view name) const {
  const auto found = isGroup_.find(ToLower(name));
  return found != isGroup_.end() && found->second;
}

}  // namespace orlune
