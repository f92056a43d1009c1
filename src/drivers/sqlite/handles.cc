#include "drivers/sqlite/handles.h"

#include <cerrno>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <fmt/format.h>
#include <sqlite3.h>
#include <unistd.h>

#include "drivers/schema/database_maintenance.h"
#include "drivers/sqlite/unicode_text.h"
#include "platform/database.h"

namespace orlune::sqlite {

namespace {

DatabaseHandle Open(const std::filesystem::path& file, int flags) {
  sqlite3* opened = nullptr;
  const int result =
      sqlite3_open_v2(file.c_str(), &opened, flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
  DatabaseHandle database(opened);
  if (result != SQLITE_OK) {
    const int cause = opened == nullptr ? 0 : sqlite3_system_errno(opened);
    throw DatabaseError(
        fmt::format("cannot open {}: {}", file.string(),
                    cause == 0 ? sqlite3_errstr(result) : std::generic_category().message(cause)));
  }
  sqlite3_db_config(opened, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  sqlite3_db_config(opened, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
  sqlite3_db_config(opened, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
  sqlite3_db_config(opened, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
  CompareTextsAsUnicode(opened);
  return database;
}

[[noreturn]] void ThrowFailure(int result, const std::string& cause) {
  constexpr int kPrimaryCode = 0xff;
  if ((result & kPrimaryCode) == SQLITE_BUSY) throw DatabaseUnavailable(cause);
  throw DatabaseError(cause);
}

/// Comes before anything that changes the file.
void RequireOurTables(sqlite3* database) {
  const auto table =
      Prepare(database, "SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = 'Calendars'");
  if (!Step(table.get())) throw DatabaseError("not an Orlune database: table Calendars is missing");
}

void RequireCompleteCopy(sqlite3* database) {
  const auto table = Prepare(database, "SELECT 1 FROM sqlite_schema WHERE name = ?");
  sqlite3_bind_text(table.get(), 1, kUnfinishedCopy, -1, SQLITE_STATIC);
  if (Step(table.get())) throw DatabaseError("incomplete copy; rerun \"orlune copy\"");
}

void Configure(sqlite3* database) {
  const bool isReadOnly = sqlite3_db_readonly(database, "main") == 1;
  if (!isReadOnly) Run(database, "PRAGMA journal_mode = WAL");
  Run(database, "PRAGMA synchronous = FULL");
  Run(database, "PRAGMA cache_size = -65536");
  Run(database, "PRAGMA temp_store = MEMORY");
}

template <class Prepare>
DatabaseHandle OpenFile(const std::filesystem::path& file, int flags, std::chrono::milliseconds busyTimeout,
                        Prepare prepare) {
  DatabaseHandle database = Open(file, flags);
  sqlite3_busy_timeout(database.get(), static_cast<int>(busyTimeout.count()));
  try {
    prepare(database.get());
  } catch (const DatabaseError& error) {
    throw DatabaseError(fmt::format("cannot open {}: {}", file.string(), error.what()));
  }
  return database;
}

}  // namespace

void CloseDatabase::operator()(sqlite3* database) const noexcept {
  sqlite3_close_v2(database);
}

void FinalizeStatement::operator()(sqlite3_stmt* statement) const noexcept {
  sqlite3_finalize(statement);
}

DatabaseHandle OpenExisting(const std::filesystem::path& file, std::chrono::milliseconds busyTimeout) {
  return OpenFile(file, SQLITE_OPEN_READWRITE, busyTimeout, [](sqlite3* database) {
    RequireOurTables(database);
    RequireCompleteCopy(database);
    Configure(database);
  });
}

DatabaseHandle OpenToFill(const std::filesystem::path& file, std::chrono::milliseconds busyTimeout) {
  return OpenFile(file, SQLITE_OPEN_READWRITE, busyTimeout, [](sqlite3* database) {
    RequireOurTables(database);
    Configure(database);
  });
}

DatabaseHandle OpenReadOnly(const std::filesystem::path& file, std::chrono::milliseconds busyTimeout) {
  // A connection that may write removes the log at the end, but also merges what a killed server left in it.
  const bool hasLog = std::filesystem::exists(file.string() + "-wal");
  const int flags = hasLog ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
  return OpenFile(file, flags, busyTimeout, [](sqlite3* database) {
    Run(database, "PRAGMA query_only = ON");
    Run(database, "PRAGMA schema_version");
  });
}

DatabaseHandle CreateEmpty(const std::filesystem::path& file) {
  // The files of its log get the rights of the database.
  const int created = open(file.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, S_IRUSR | S_IWUSR);
  if (created < 0) throw DatabaseError(std::generic_category().message(errno));
  close(created);
  DatabaseHandle database = Open(file, SQLITE_OPEN_READWRITE);
  Configure(database.get());
  return database;
}

void Check(sqlite3* database, int result) {
  if (result != SQLITE_OK) ThrowFailure(result, sqlite3_errmsg(database));
}

StatementHandle Prepare(sqlite3* database, std::string_view sql) {
  sqlite3_stmt* statement = nullptr;
  Check(database, sqlite3_prepare_v3(database, sql.data(), static_cast<int>(sql.size()),
                                     SQLITE_PREPARE_PERSISTENT, &statement, nullptr));
  return StatementHandle(statement);
}

bool Step(sqlite3_stmt* statement) {
  const int result = sqlite3_step(statement);
  if (result == SQLITE_ROW) return true;
  if (result == SQLITE_DONE) return false;
  const std::string cause = sqlite3_errmsg(sqlite3_db_handle(statement));
  sqlite3_reset(statement);
  ThrowFailure(result, fmt::format("{} in: {}", cause, sqlite3_sql(statement)));
}

void Run(sqlite3_stmt* statement) {
  while (Step(statement)) {
  }
  sqlite3_reset(statement);
}

void Run(sqlite3* database, const char* sql) {
  Check(database, sqlite3_exec(database, sql, nullptr, nullptr, nullptr));
}

std::string_view ColumnText(sqlite3_stmt* statement, int column) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
  return {text, static_cast<std::size_t>(sqlite3_column_bytes(statement, column))};
}

}  // namespace orlune::sqlite
