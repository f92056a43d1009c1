#pragma once

#include <filesystem>
#include <string>

#include <sqlite3.h>

#include "drivers/database_fixture.h"
#include "drivers/sqlite/base_schema.h"
#include "drivers/sqlite/handles.h"

namespace orlune::testing {

/// A fresh database file without rows.
class SqliteFixture : public DatabaseFixture {
 protected:
  SqliteFixture() : DatabaseFixture(Engine::kSqlite) {}

  /// Another program's view of the file.
  sqlite::DatabaseHandle OpenRaw() const {
    sqlite3* opened = nullptr;
    EXPECT_EQ(sqlite3_open(file_.c_str(), &opened), SQLITE_OK);
    return sqlite::DatabaseHandle(opened);
  }

  const std::string file_ = place_.Path();
  const std::filesystem::path folder_ = std::filesystem::path(file_).parent_path();
};

}  // namespace orlune::testing
