#include "drivers/sqlite/base_schema.h"

#include <string>
#include <system_error>

#include "drivers/schema/base_tables.h"
#include "drivers/sqlite/handles.h"
#include "drivers/sqlite/sqlite_sql.h"
#include "platform/database.h"

namespace orlune {

namespace {

void CreateTables(sqlite3* database) {
  for (const schema::BaseTable& table : schema::BaseTables())
    sqlite::Run(database, schema::CreationOf(table, sqlite::SqliteSql()).c_str());
}

}  // namespace

void CreateBaseDatabase(const std::filesystem::path& file) {
  if (std::filesystem::exists(file)) throw DatabaseError("the file " + file.string() + " exists");
  std::filesystem::path unfinished = file;
  unfinished += ".unfinished";
  std::error_code ignored;
  std::filesystem::remove(unfinished, ignored);
  try {
    CreateTables(sqlite::CreateEmpty(unfinished).get());
    std::filesystem::rename(unfinished, file);
  } catch (const std::exception& error) {
    std::filesystem::remove(unfinished, ignored);
    throw DatabaseError("cannot create " + file.string() + ": " + error.what());
  }
}

}  // namespace orlune
