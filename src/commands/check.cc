#include "commands/check.h"

#include <memory>
#include <string_view>

#include "commands/calendar_names.h"
#include "commands/findings.h"
#include "commands/row_checks.h"
#include "commands/schema_check.h"
#include "platform/database.h"

namespace orlune {
namespace {

constexpr FindingKind kDamage{"Damaged database",
                              "stop the server, keep a copy of the damaged database, and restore a backup"};

constexpr FindingKind kUnread{"Incomplete check",
                              "mend the cause, such as a missing permission or a timeout, and check again"};

/// What the engine cannot read is a finding too.
template <class Check>
void Guarded(Findings& findings, Check check) {
  try {
    check();
  } catch (const DatabaseError& error) {
    findings.Add(kUnread, error.what());
  }
}

void CheckRows(DatabaseMaintenance& database, const dialect::Catalogue& tables, Findings& findings) {
  for (const dialect::Table& table : tables.Tables) {
    Guarded(findings, [&] { CheckFields(database, table, findings); });
  }
  const dialect::Table* calendars = tables.Find("Calendars");
  if (calendars == nullptr) return;
  const CalendarNames names(database, *calendars, findings);
  Guarded(findings,
          [&] { CheckCalendars(database, *calendars, tables.Find("StyleSheets"), names, findings); });
  const auto checkTable = [&](std::string_view name, auto check) {
    const dialect::Table* table = tables.Find(name);
    if (table != nullptr) Guarded(findings, [&] { check(database, *table, names, findings); });
  };
  checkTable("Events", CheckEvents);
  checkTable("Messages", CheckMessages);
  checkTable("GroupViews", CheckGroupViews);
  Guarded(findings, [&] { CheckSharing(database, tables, names, findings); });
}

}  // namespace

bool CheckDatabase(const NamedDatabase& named, std::ostream& output) {
  const std::unique_ptr<DatabaseMaintenance> database = named.Engine.OpenToRead(named.Address);
  Findings findings;
  Guarded(findings, [&] {
    const dialect::Catalogue tables = CheckSchema(*database, findings);
    CheckRows(*database, tables, findings);
  });
  Guarded(findings, [&] {
    for (const std::string& damage : database->Damages()) findings.Add(kDamage, damage);
  });
  findings.Print(output);
  output << named.Address.Displayed() << (findings.IsSound() ? " is sound\n" : " needs attention\n");
  return findings.IsSound();
}

}  // namespace orlune
