#include "drivers/sqlite/triggers.h"

#include <algorithm>

#include "drivers/dialect/engine_sql.h"
#include "drivers/schema/triggers.h"
#include "drivers/sqlite/handles.h"
#include "drivers/sqlite/sqlite_sql.h"

namespace orlune::sqlite {

namespace {

using dialect::Quoted;
using schema::DefinedTrigger;
using schema::Trigger;

/// The one writer numbers its changes in their order, also when the log was trimmed.
const schema::TriggerSql& Sql() {
  static const SqliteSql kEngine;
  static const schema::TriggerSql kSql{
      .Engine = kEngine,
      .NextMoment =
          "1 + max(coalesce((SELECT max(\"Moment\") FROM \"CalendarChanges\"), 0), "
          "coalesce((SELECT max(\"TrimmedTo\") FROM \"CalendarLogs\"), 0))",
      .Exactly = " COLLATE BINARY"};
  return kSql;
}

std::vector<Trigger> Possible(const dialect::Catalogue& catalogue) {
  return schema::PossibleTriggers(catalogue, Sql());
}

DefinedTrigger Defined(const Trigger& trigger) {
  std::string sql = "CREATE TRIGGER " + Quoted(trigger.Name) + " AFTER ";
  sql.append(trigger.Change).append(" ON ").append(Quoted(trigger.Table));
  if (!trigger.Condition.empty()) sql += " WHEN " + trigger.Condition;
  sql += " BEGIN ";
  for (const std::string& statement : trigger.Statements) sql += statement + "; ";
  return {trigger.Name, sql + "END"};
}

std::vector<DefinedTrigger> Existing(sqlite3* database) {
  std::vector<DefinedTrigger> existing;
  const auto row = Prepare(database, "SELECT name, sql FROM sqlite_schema WHERE type = 'trigger'");
  while (Step(row.get()))
    existing.push_back({std::string(ColumnText(row.get(), 0)), std::string(ColumnText(row.get(), 1))});
  return existing;
}

bool Has(const std::vector<DefinedTrigger>& triggers, const DefinedTrigger& trigger) {
  return std::find(triggers.begin(), triggers.end(), trigger) != triggers.end();
}

std::vector<Trigger> Missing(sqlite3* database, const dialect::Catalogue& catalogue) {
  const std::vector<DefinedTrigger> existing = Existing(database);
  std::vector<Trigger> missing = Possible(catalogue);
  std::erase_if(missing, [&](const Trigger& trigger) { return Has(existing, Defined(trigger)); });
  return missing;
}

void Drop(sqlite3* database, const Trigger& trigger) {
  Run(database, ("DROP TRIGGER IF EXISTS " + Quoted(trigger.Name)).c_str());
}

}  // namespace

Triggers::Triggers(sqlite3* database, const dialect::Catalogue& catalogue) {
  const std::vector<DefinedTrigger> existing = Existing(database);
  std::size_t ours = 0;
  for (const Trigger& trigger : Possible(catalogue)) {
    if (!Has(existing, Defined(trigger))) {
      areComplete_ = false;
      continue;
    }
    ++ours;
    effects_.push_back({trigger.Table, trigger.Written});
  }
  hasOthers_ = existing.size() > ours;
}

std::vector<std::string> Triggers::WithWritten(std::vector<std::string> tables) const {
  std::vector<std::string> all = tables;
  for (const auto& [table, written] : effects_) {
    if (std::find(tables.begin(), tables.end(), table) != tables.end())
      all.insert(all.end(), written.begin(), written.end());
  }
  return all;
}

std::vector<std::string> NamesOfMissingTriggers(sqlite3* database, const dialect::Catalogue& catalogue) {
  std::vector<std::string> names;
  for (const Trigger& trigger : Missing(database, catalogue)) names.push_back(trigger.Name);
  return names;
}

void CreateMissingTriggers(sqlite3* database, const dialect::Catalogue& catalogue) {
  for (const Trigger& trigger : Missing(database, catalogue)) {
    Drop(database, trigger);
    Run(database, Defined(trigger).Definition.c_str());
  }
}

void DropTriggers(sqlite3* database, const dialect::Catalogue& catalogue) {
  for (const Trigger& trigger : Possible(catalogue)) Drop(database, trigger);
}

}  // namespace orlune::sqlite
