#include "commands/schema_check.h"

#include <string>
#include <utility>

#include <fmt/format.h>

#include "commands/current_tables.h"

namespace orlune {
namespace {

using dialect::ColumnType;

constexpr FindingKind kForeign{"Not an Orlune database",
                               "name another one, or create one with \"orlune init\""};
constexpr FindingKind kUnfinished{"Incomplete copy", "rerun the same \"orlune copy\", or delete it"};
constexpr FindingKind kMissing{"Missing tables and columns", "restore a backup"};
constexpr FindingKind kNotUpgraded{"Missing tables and columns of this version",
                                   "the first page that a server shows adds them"};
constexpr FindingKind kWrongType{"Columns of the wrong type", "change the type by hand, or restore a backup"};
constexpr FindingKind kIndex{"Missing indexes, which make pages slow",
                             "the next start of a server that may write to the database creates them"};
constexpr FindingKind kTrigger{"Missing triggers, without which devices do not learn of changes",
                               "the next start of a server that may write to the database creates them"};
constexpr FindingKind kCounter{
    "Counters below the highest number in their tables, so that new rows could get a number in use",
    "copy the rows to a new database with \"orlune copy\""};

bool IsText(ColumnType type) {
  return type == ColumnType::kText || type == ColumnType::kMemo;
}

bool IsForeign(const dialect::Catalogue& present, Findings& findings) {
  if (present.Find("Calendars") != nullptr) return false;
  std::string names;
  for (const dialect::Table& table : present.Tables) names += (names.empty() ? "" : ", ") + table.Name;
  findings.Add(kForeign, names.empty() ? "it has no tables" : "its tables are " + names);
  return true;
}

/// The columns of `wanted` that `present` has, as the row checks read them.
dialect::Table ReadablePart(const dialect::Table& wanted, const dialect::Table& present, Findings& findings) {
  dialect::Table part{wanted.Name, {}};
  for (const dialect::Column& column : wanted.Columns) {
    const std::string place = wanted.Name + "." + column.Name;
    const dialect::Column* found = present.Find(column.Name);
    if (found == nullptr) {
      const bool isAdded = IsAddedByUpgrade(wanted.Name, column.Name) && !IsAddedByUpgrade(wanted.Name, {});
      findings.Add(isAdded ? kNotUpgraded : kMissing, place);
      continue;
    }
    const bool isSame = found->Type == column.Type || (IsText(found->Type) && IsText(column.Type));
    if (!isSame) {
      findings.Add(kWrongType, fmt::format("{}: expected {}{}", place, DescribeType(column.Type),
                                           column.Type == ColumnType::kCounter ? ", counted" : ""));
    }
    if (isSame || column.Type != ColumnType::kCounter) part.Columns.push_back(column);
  }
  return part;
}

void CheckCounter(DatabaseMaintenance& database, const dialect::Table& table, Findings& findings) {
  const std::int64_t highest = database.HighestNumber(table).value_or(0);
  const std::int64_t last = database.LastCounter(table.Name);
  if (last >= highest) return;
  findings.Add(kCounter, fmt::format("{}: highest number {}, counter at {}", table.Name, highest, last));
}

void AddReadable(DatabaseMaintenance& database, dialect::Table part, dialect::Catalogue& readable,
                 Findings& findings) {
  if (part.Counter() == nullptr) return;
  CheckCounter(database, part, findings);
  readable.Tables.push_back(std::move(part));
}

}  // namespace

dialect::Catalogue CheckSchema(DatabaseMaintenance& database, Findings& findings) {
  const dialect::Catalogue present = database.Tables();
  if (IsForeign(present, findings)) return {};
  const auto copied = database.UnfinishedCopySource();
  if (copied) findings.Add(kUnfinished, "its source is " + *copied);
  dialect::Catalogue readable;
  for (const dialect::Table& wanted : TablesInForm(SchemaForm::kCurrent).Tables) {
    const dialect::Table* found = present.Find(wanted.Name);
    if (found == nullptr) {
      findings.Add(IsAddedByUpgrade(wanted.Name, {}) ? kNotUpgraded : kMissing, "table " + wanted.Name);
      continue;
    }
    AddReadable(database, ReadablePart(wanted, *found, findings), readable, findings);
  }
  for (const dialect::Table& wanted : SharingTables().Tables) {
    const dialect::Table* found = present.Find(wanted.Name);
    if (found != nullptr) AddReadable(database, ReadablePart(wanted, *found, findings), readable, findings);
  }
  if (!copied) {
    for (const std::string& index : database.MissingIndexes()) findings.Add(kIndex, index);
    for (const std::string& trigger : database.MissingTriggers()) findings.Add(kTrigger, trigger);
  }
  return readable;
}

}  // namespace orlune
