#include "drivers/postgresql/base_schema.h"

#include <string_view>
#include <vector>

#include <fmt/format.h>

#include "drivers/postgresql/address.h"
#include "drivers/postgresql/case_folding_function.h"
#include "drivers/postgresql/postgresql_sql.h"
#include "drivers/postgresql/schema_reader.h"
#include "drivers/postgresql/schema_setup.h"
#include "drivers/schema/base_tables.h"
#include "platform/database.h"

namespace orlune {

namespace {

/// The base tables, and those that the upgrade adds.
std::vector<std::string> OurTables() {
  std::vector<std::string> names{"GroupViews", "EventTypes"};
  for (const schema::BaseTable& table : schema::BaseTables()) names.push_back(table.Name);
  return names;
}

void RequireNoneOfOurs(const dialect::Catalogue& tables) {
  for (const std::string& table : OurTables()) {
    if (tables.Find(table) != nullptr) {
      throw DatabaseError(fmt::format("table {} exists; name a database without tables of ours", table));
    }
  }
}

template <class Action>
void OnServer(const std::string& address, std::string_view task, Action action) {
  try {
    const PostgresqlOptions options;
    postgresql::Link link(address, options);
    postgresql::Configure(link, options);
    action(link);
  } catch (const DatabaseError& error) {
    throw DatabaseError(fmt::format("{} {}: {}", task, WithoutPassword(address), error.what()));
  }
}

}  // namespace

void CreateBaseTables(const std::string& address) {
  OnServer(address, "cannot create tables in", [](postgresql::Link& link) {
    RequireNoneOfOurs(postgresql::ReadSchema(link).Tables);
    std::vector<std::string> statements{postgresql::CreateCaseFoldingFunction()};
    for (const schema::BaseTable& table : schema::BaseTables())
      statements.push_back(schema::CreationOf(table, postgresql::PostgresqlSql()));
    statements.emplace_back(postgresql::kTellOthers);
    postgresql::RunAsOnlyWriter(link, statements);
  });
}

void DropTables(const std::string& address) {
  OnServer(address, "cannot drop the tables of", [](postgresql::Link& link) {
    std::vector<std::string> statements;
    for (const std::string& table : OurTables())
      statements.push_back("DROP TABLE IF EXISTS " + dialect::Quoted(table));
    statements.emplace_back(postgresql::kTellOthers);
    postgresql::RunAsOnlyWriter(link, statements);
  });
}

}  // namespace orlune
