#include "drivers/sqlite/indexes.h"

#include <string>
#include <vector>

#include "drivers/schema/indexes.h"
#include "drivers/sqlite/handles.h"
#include "drivers/sqlite/sqlite_sql.h"
#include "drivers/sqlite/triggers.h"
#include "platform/database.h"

namespace orlune::sqlite {

namespace {

std::vector<const schema::Index*> Missing(sqlite3* database, const dialect::Catalogue& catalogue) {
  std::vector<std::string> existing;
  const auto row = Prepare(database, "SELECT name FROM sqlite_schema WHERE type = 'index'");
  while (Step(row.get())) existing.emplace_back(ColumnText(row.get(), 0));
  return schema::MissingIndexes(catalogue, existing);
}

}  // namespace

bool HasAllIndexes(sqlite3* database, const dialect::Catalogue& catalogue) {
  return Missing(database, catalogue).empty();
}

std::vector<std::string> NamesOfMissingIndexes(sqlite3* database, const dialect::Catalogue& catalogue) {
  std::vector<std::string> names;
  for (const schema::Index* index : Missing(database, catalogue)) names.emplace_back(index->Name);
  return names;
}

void CreateMissingParts(sqlite3* database, const dialect::Catalogue& catalogue) {
  Run(database, "BEGIN IMMEDIATE");
  try {
    for (const schema::Index* index : Missing(database, catalogue)) {
      Run(database, schema::CreationOf(*index, *catalogue.Find(index->Table), SqliteSql()).c_str());
    }
    CreateMissingTriggers(database, catalogue);
    Run(database, "COMMIT");
  } catch (const DatabaseError&) {
    Run(database, "ROLLBACK");
    throw;
  }
}

void DropParts(sqlite3* database, const dialect::Catalogue& catalogue) {
  for (const schema::Index* index : schema::PossibleIndexes(catalogue)) {
    Run(database, ("DROP INDEX IF EXISTS " + dialect::Quoted(index->Name)).c_str());
  }
  DropTriggers(database, catalogue);
}

}  // namespace orlune::sqlite
