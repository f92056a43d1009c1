#include "support/test_database.h"

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include <gtest/gtest.h>
#include <libpq-fe.h>
#include <sqlite3.h>
#include <unistd.h>

#include "drivers/postgresql/base_schema.h"
#include "drivers/postgresql/postgresql_driver.h"
#include "drivers/sqlite/base_schema.h"
#include "drivers/sqlite/handles.h"
#include "drivers/sqlite/sqlite_driver.h"

namespace orlune::testing {

namespace {

std::string ServerAddress() {
  const char* address = std::getenv("ORLUNE_TEST_POSTGRESQL");
  if (address == nullptr)
    throw std::runtime_error("ORLUNE_TEST_POSTGRESQL names no server; scripts/with_postgresql.sh starts one");
  return address;
}

std::string RunOnServer(const std::string& address, const std::string& sql) {
  const std::unique_ptr<PGconn, decltype(&PQfinish)> connection(PQconnectdb(address.c_str()), PQfinish);
  const std::unique_ptr<PGresult, decltype(&PQclear)> result(PQexec(connection.get(), sql.c_str()), PQclear);
  const ExecStatusType status = PQresultStatus(result.get());
  if (status != PGRES_TUPLES_OK && status != PGRES_COMMAND_OK)
    throw std::runtime_error(PQerrorMessage(connection.get()));
  return PQntuples(result.get()) > 0 ? PQgetvalue(result.get(), 0, 0) : "";
}

std::string RunOnFile(const std::string& file, const std::string& sql) {
  sqlite3* opened = nullptr;
  EXPECT_EQ(sqlite3_open(file.c_str(), &opened), SQLITE_OK);
  const sqlite::DatabaseHandle database(opened);
  const auto statement = sqlite::Prepare(opened, sql);
  if (!sqlite::Step(statement.get())) return "";
  std::string first(sqlite::ColumnText(statement.get(), 0));
  while (sqlite::Step(statement.get())) {
  }
  return first;
}

std::string NewSchemaName() {
  static std::atomic<int> number = 0;
  return "test_" + std::to_string(getpid()) + "_" + std::to_string(++number);
}

}  // namespace

Engine EngineUnderTest() {
  const char* name = std::getenv("ORLUNE_TEST_ENGINE");
  if (name == nullptr || std::string_view(name) == "sqlite") return Engine::kSqlite;
  if (std::string_view(name) == "postgresql") return Engine::kPostgresql;
  throw std::runtime_error("ORLUNE_TEST_ENGINE names no engine");
}

DatabasePlace::DatabasePlace(Engine engine) : engine_(engine) {
  if (engine_ == Engine::kSqlite) {
    path_ = (folder_.Path() / "calendar.db").string();
    return;
  }
  schema_ = NewSchemaName();
  RunOnServer(ServerAddress(), "CREATE SCHEMA " + schema_);
  path_ = ServerAddress() + "?options=-csearch_path%3D" + schema_;
}

DatabasePlace::~DatabasePlace() {
  if (schema_.empty()) return;
  try {
    RunOnServer(ServerAddress(), "SET client_min_messages = warning; DROP SCHEMA " + schema_ + " CASCADE");
  } catch (const std::exception& error) {
    ADD_FAILURE() << error.what();
  }
}

void DatabasePlace::CreateTables() const {
  if (engine_ == Engine::kSqlite) {
    CreateBaseDatabase(path_);
  } else {
    CreateBaseTables(path_);
  }
}

void DatabasePlace::Clear() const {
  if (engine_ == Engine::kSqlite) {
    std::filesystem::remove(path_);
  } else {
    DropTables(path_);
  }
}

bool DatabasePlace::IsEmpty() const {
  if (engine_ == Engine::kSqlite) return std::filesystem::is_empty(folder_.Path());
  return RunNative("SELECT count(*) FROM pg_tables WHERE schemaname = current_schema()") == "0";
}

std::unique_ptr<DatabaseDriver> DatabasePlace::MakeDriver(const RegionalSettings& regional,
                                                          std::chrono::milliseconds patience) const {
  if (engine_ == Engine::kSqlite)
    return std::make_unique<SqliteDriver>(
        regional, SqliteOptions{.BusyTimeout = patience, .MostIdle = 2, .IdentityCheck = {}});
  return std::make_unique<PostgresqlDriver>(
      regional, PostgresqlOptions{.MostConnections = 6, .PoolWait = patience, .LockTimeout = patience});
}

std::string DatabasePlace::RunNative(const std::string& sql) const {
  return engine_ == Engine::kSqlite ? RunOnFile(path_, sql) : RunOnServer(path_, sql);
}

}  // namespace orlune::testing
