#include <set>
#include <string>
#include <string_view>
#include <unordered_set>

#include <fmt/format.h>

#include "commands/row_checks.h"
#include "commands/table_scan.h"
#include "model/repetition.h"

namespace orlune {
namespace {

constexpr FindingKind kGone{"Rows of deleted events", "delete them by hand, or leave them: nobody sees them"};
constexpr FindingKind kRole{"Days of events that are neither listed nor left out", "delete them by hand"};
constexpr FindingKind kNoDays{"Events without their listed days, which are not shown",
                              "open them by number (?p=e&id=...) and choose another repetition"};
constexpr FindingKind kEmptyObject{"Objects of devices without events",
                                   "delete them by hand, or leave them: nobody sees them"};
constexpr FindingKind kAccess{"Access of devices for unknown users", "delete the rows by hand"};
constexpr FindingKind kLinked{"Devices' settings and links of unknown calendars",
                              "their users can remove the links", true};

using Numbers = std::unordered_set<std::int64_t>;

Numbers NumbersIn(DatabaseMaintenance& database, const dialect::Catalogue& tables, std::string_view name) {
  Numbers numbers;
  const dialect::Table* table = tables.Find(name);
  if (table == nullptr) return numbers;
  const dialect::Table counter{table->Name, {*table->Counter()}};
  for (TableScan row(database, counter); row.Next();) numbers.insert(row.Number());
  return numbers;
}

std::int64_t NumberAt(const TableScan& row, int column) {
  const auto* number = std::get_if<std::int64_t>(&row.Get(column));
  return number == nullptr ? 0 : *number;
}

class SharingCheck {
 public:
  SharingCheck(DatabaseMaintenance& database, const dialect::Catalogue& tables, const CalendarNames& names,
               Findings& findings)
      : database_(database), tables_(tables), names_(names), findings_(findings) {}

  void Run() {
    if (tables_.Find("EventDays") == nullptr) return;
    events_ = NumbersIn(database_, tables_, "Events");
    CheckDays();
    CheckObjects();
    for (const char* table : {"AppPasswords", "SecretLinks", "DeviceSettings"}) CheckAccess(table);
  }

 private:
  template <class Visit>
  void ForEachRow(std::string_view name, Visit visit) {
    const dialect::Table* table = tables_.Find(name);
    if (table == nullptr) return;
    for (TableScan row(database_, *table); row.Next();) visit(row, fmt::format("{} {}", name, row.Number()));
  }

  void CheckDays() {
    Numbers listed;
    ForEachRow("EventDays", [&](const TableScan& row, const std::string& place) {
      const std::int64_t event = NumberAt(row, row.Column("EventID"));
      const std::string_view role = row.Text(row.Column("Role"));
      if (!events_.contains(event)) findings_.Add(kGone, fmt::format("{}: event {}", place, event));
      if (role == "listed") {
        listed.insert(event);
      } else if (role != "left out") {
        findings_.Add(kRole, fmt::format("{}: \"{}\"", place, role));
      }
    });
    ForEachRow("Events", [&](const TableScan& row, const std::string&) {
      const bool isListed = RepetitionOf(row.Text(row.Column("Type"))) == Repetition::kListed;
      if (isListed && !listed.contains(row.Number()))
        findings_.Add(kNoDays, fmt::format("event {}", row.Number()));
    });
  }

  void CheckObjects() {
    const Numbers objects = NumbersIn(database_, tables_, "CalendarObjects");
    std::set<std::int64_t> empty(objects.begin(), objects.end());
    ForEachRow("ObjectEvents", [&](const TableScan& row, const std::string& place) {
      const std::int64_t event = NumberAt(row, row.Column("EventID"));
      const std::int64_t object = NumberAt(row, row.Column("ObjectID"));
      if (!events_.contains(event)) findings_.Add(kGone, fmt::format("{}: event {}", place, event));
      if (!objects.contains(object)) findings_.Add(kGone, fmt::format("{}: object {}", place, object));
      empty.erase(object);
    });
    for (const std::int64_t object : empty) findings_.Add(kEmptyObject, fmt::format("object {}", object));
  }

  void CheckAccess(std::string_view table) {
    ForEachRow(table, [&](const TableScan& row, const std::string& place) {
      const std::string_view login = row.Text(row.Column("Login"));
      if (!names_.Contains(login) || names_.IsGroup(login))
        findings_.Add(kAccess, fmt::format("{} of \"{}\"", place, login));
      const std::string_view calendar = row.Text(row.Column("Calendar"));
      const bool isOfCalendar = row.Column("Calendar") >= 0 && !calendar.starts_with('@');
      if (isOfCalendar && !names_.Contains(calendar))
        findings_.Add(kLinked, fmt::format("{}: \"{}\"", place, calendar));
    });
  }

  DatabaseMaintenance& database_;
  const dialect::Catalogue& tables_;
  const CalendarNames& names_;
  Findings& findings_;
  Numbers events_;
};

}  // namespace

void CheckSharing(DatabaseMaintenance& database, const dialect::Catalogue& tables, const CalendarNames& names,
                  Findings& findings) {
  SharingCheck(database, tables, names, findings).Run();
}

}  // namespace orlune
