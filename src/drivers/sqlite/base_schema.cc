#include "drivers/sqlite/base_schema.h"

#include <string>
#include <system_error>

#include <unistd.h>

#include "drivers/schema/base_tables.h"
#include "drivers/sqlite/handles.h"
#include "drivers/sqlite/sqlite_sql.h"
#include "platform/database.h"

namespace orlune {

namespace {

namespace fs = std::filesystem;

/// A database file under a temporary name; removed unless it was finished.
class UnfinishedFile {
 public:
  explicit UnfinishedFile(const fs::path& file)
      : path_(file.string() + ".unfinished-" + std::to_string(getpid())) {}
  UnfinishedFile(const UnfinishedFile&) = delete;
  UnfinishedFile& operator=(const UnfinishedFile&) = delete;
  ~UnfinishedFile() {
    std::error_code ignored;
    for (const char* suffix : {"", "-wal", "-shm"}) fs::remove(path_.string() + suffix, ignored);
  }

  const fs::path& Path() const { return path_; }

  void Finish(const fs::path& file) const {
    if (fs::exists(path_.string() + "-wal")) throw DatabaseError("the log could not be merged");
    fs::rename(path_, file);
  }

 private:
  const fs::path path_;
};

void CreateTables(sqlite3* database) {
  for (const schema::BaseTable& table : schema::BaseTables())
    sqlite::Run(database, schema::CreationOf(table, sqlite::SqliteSql()).c_str());
}

}  // namespace

void CreateBaseDatabase(const fs::path& file, const std::function<void(const fs::path&)>& fill) {
  try {
    if (fs::exists(file)) throw DatabaseError("the file exists; name another one");
    const UnfinishedFile unfinished(file);
    CreateTables(sqlite::CreateEmpty(unfinished.Path()).get());
    if (fill) fill(unfinished.Path());
    unfinished.Finish(file);
  } catch (const std::exception& error) {
    throw DatabaseError("cannot create " + file.string() + ": " + error.what());
  }
}

}  // namespace orlune
