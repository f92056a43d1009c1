#include "commands/calendar_names.h"

#include <fmt/format.h>

#include "commands/table_scan.h"
#include "drivers/unicode/case_folding.h"

namespace orlune {
namespace {

using unicode::FoldCase;

constexpr FindingKind kNameless{
    "Calendars without a name",
    "nobody can log in to them or see them; delete these rows, or restore a backup"};
constexpr FindingKind kDuplicate{"Duplicate calendar names",
                                 "pages find only one of them; rename or delete the other in Administration"};
constexpr FindingKind kWithoutAdmin{
    "No user 'admin'",
    "nobody can administer the calendar, and pages without a login lack settings; restore a backup"};
constexpr FindingKind kWithoutDefault{"No group 'default'",
                                      "events for everybody have no place; restore a backup, or copy the "
                                      "rows to a database of \"orlune init\""};

}  // namespace

CalendarNames::CalendarNames(DatabaseMaintenance& database, const dialect::Table& calendars,
                             Findings& findings) {
  TableScan row(database, calendars);
  const int name = row.Column("Name");
  const int group = row.Column("IsGroup");
  while (row.Next()) {
    const std::string place = fmt::format("calendar {}", row.Number());
    if (row.Text(name).empty()) {
      findings.Add(kNameless, place);
    } else if (!isGroup_.emplace(FoldCase(row.Text(name)), row.YesNo(group)).second) {
      findings.Add(kDuplicate, fmt::format("{}, \"{}\"", place, row.Text(name)));
    }
  }
  if (!Contains("admin") || IsGroup("admin")) findings.Add(kWithoutAdmin, "admin");
  if (!IsGroup("default")) findings.Add(kWithoutDefault, "default");
}

bool CalendarNames::Contains(std::string_view name) const {
  return isGroup_.contains(FoldCase(name));
}

bool CalendarNames::IsGroup(std::string_view name) const {
  const auto found = isGroup_.find(FoldCase(name));
  return found != isGroup_.end() && found->second;
}

}  // namespace orlune
