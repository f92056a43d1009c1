#include "drivers/postgresql/base_schema.h"

#include <vector>

#include "drivers/postgresql/address.h"
#include "drivers/postgresql/case_folding_function.h"
#include "drivers/postgresql/postgresql_sql.h"
#include "drivers/postgresql/schema_reader.h"
#include "drivers/postgresql/schema_setup.h"
#include "drivers/schema/base_tables.h"
#include "platform/database.h"

namespace orlune {

namespace {

void RequireNoneOfOurs(const access_sql::Catalogue& tables) {
  for (const schema::BaseTable& table : schema::BaseTables()) {
    if (tables.Find(table.Name) != nullptr) throw DatabaseError("it has a table " + table.Name + " already");
  }
}

}  // namespace

void CreateBaseTables(const std::string& address) {
  try {
    const PostgresqlOptions options;
    postgresql::Link link(address, options);
    postgresql::Configure(link, options);
    RequireNoneOfOurs(postgresql::ReadSchema(link).Tables);
    std::vector<std::string> statements{postgresql::CreateCaseFoldingFunction()};
    for (const schema::BaseTable& table : schema::BaseTables())
      statements.push_back(schema::CreationOf(table, postgresql::PostgresqlSql()));
    statements.emplace_back(postgresql::kTellOthers);
    postgresql::RunAsOnlyWriter(link, statements);
  } catch (const DatabaseError& error) {
    throw DatabaseError("cannot make tables in " + WithoutPassword(address) + ": " + error.what());
  }
}

}  // namespace orlune
