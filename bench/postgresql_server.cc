#include "postgresql_server.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <vector>

#include <libpq-fe.h>
#include <sqlite3.h>
#include <unistd.h>

#include "calendar_file.h"
#include "commands/init.h"
#include "drivers/engines/database_engines.h"
#include "drivers/postgresql/postgresql_driver.h"
#include "drivers/sqlite/database.h"

namespace orlune::bench {
namespace {

constexpr const char* kNoTimeLimit = "&options=-cstatement_timeout%3D3600000";
constexpr std::size_t kCopyBatchBytes = 1 << 20;

struct ClearRows {
  void operator()(PGresult* result) const noexcept { PQclear(result); }
};
using Rows = std::unique_ptr<PGresult, ClearRows>;

ServerConnection ConnectTo(const std::string& address) {
  ServerConnection connection(PQconnectdb(address.c_str()));
  if (PQstatus(connection.get()) != CONNECTION_OK) throw std::runtime_error(PQerrorMessage(connection.get()));
  PQsetNoticeProcessor(
      connection.get(), [](void*, const char*) {}, nullptr);
  return connection;
}

Rows Run(const ServerConnection& connection, const std::string& sql) {
  Rows rows(PQexec(connection.get(), sql.c_str()));
  const ExecStatusType status = PQresultStatus(rows.get());
  if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK && status != PGRES_COPY_IN)
    throw std::runtime_error(PQerrorMessage(connection.get()));
  return rows;
}

/// Runs the statements that the rows of `query` contain.
void RunEach(const ServerConnection& connection, const std::string& query) {
  const Rows rows = Run(connection, query);
  for (int row = 0; row < PQntuples(rows.get()); ++row) Run(connection, PQgetvalue(rows.get(), row, 0));
}

void AppendField(std::string& lines, sqlite3_stmt* row, int column) {
  if (sqlite3_column_type(row, column) == SQLITE_NULL) {
    lines += "\\N";
    return;
  }
  for (const char c : sqlite::ColumnText(row, column)) {
    if (c == '\\' || c == '\n' || c == '\r' || c == '\t') lines += '\\';
    lines += c;
  }
}

std::string ColumnNames(sqlite3_stmt* query) {
  std::string names;
  for (int column = 0; column < sqlite3_column_count(query); ++column)
    names.append(column == 0 ? "\"" : ", \"").append(sqlite3_column_name(query, column)).append("\"");
  return names;
}

void SendRows(const ServerConnection& to, sqlite3_stmt* rows) {
  std::string lines;
  const auto send = [&] { PQputCopyData(to.get(), lines.data(), static_cast<int>(lines.size())); };
  while (sqlite::Step(rows)) {
    for (int column = 0; column < sqlite3_column_count(rows); ++column) {
      if (column > 0) lines += '\t';
      AppendField(lines, rows, column);
    }
    lines += '\n';
    if (lines.size() < kCopyBatchBytes) continue;
    send();
    lines.clear();
  }
  send();
  PQputCopyEnd(to.get(), nullptr);
  const Rows copied(PQgetResult(to.get()));
  if (PQresultStatus(copied.get()) != PGRES_COMMAND_OK) throw std::runtime_error(PQerrorMessage(to.get()));
  while (const Rows rest{PQgetResult(to.get())}) {
  }
}

void CopyTable(sqlite3* from, const ServerConnection& to, const std::string& table) {
  const auto query = sqlite::Prepare(from, "SELECT * FROM \"" + table + "\"");
  Run(to, "TRUNCATE \"" + table + "\"");
  Run(to, "COPY \"" + table + "\" (" + ColumnNames(query.get()) + ") FROM STDIN");
  SendRows(to, query.get());
}

void CopyRows(const std::filesystem::path& file, const ServerConnection& to) {
  constexpr std::chrono::milliseconds kBusyTimeout{5000};
  const auto from = sqlite::OpenExisting(file, kBusyTimeout);
  const auto tables = sqlite::Prepare(from.get(),
                                      "SELECT name FROM sqlite_schema WHERE type = 'table' AND name NOT LIKE "
                                      "'sqlite_%' AND name <> 'Sessions'");
  while (sqlite::Step(tables.get()))
    CopyTable(from.get(), to, std::string(sqlite::ColumnText(tables.get(), 0)));
}

std::string FileText(const std::string& path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// The fields of /proc/PID/stat that follow the name, from the state on.
std::vector<std::string> StatFields(int process) {
  const std::string text = FileText("/proc/" + std::to_string(process) + "/stat");
  std::istringstream fields(text.substr(text.rfind(')') + 1));
  return {std::istream_iterator<std::string>(fields), {}};
}

int ParentOf(int process) {
  constexpr std::size_t kParent = 1;
  return std::stoi(StatFields(process).at(kParent));
}

std::chrono::nanoseconds OwnTime(int process) {
  std::istringstream text(FileText("/proc/" + std::to_string(process) + "/schedstat"));
  std::int64_t running = 0;
  text >> running;
  return std::chrono::nanoseconds(running);
}

/// The time of children that have ended.
std::chrono::nanoseconds EndedChildrenTime(int process) {
  constexpr std::size_t kUserTime = 13;
  constexpr std::size_t kSystemTime = 14;
  const auto fields = StatFields(process);
  const std::int64_t ticks = std::stoll(fields.at(kUserTime)) + std::stoll(fields.at(kSystemTime));
  return std::chrono::nanoseconds(std::chrono::seconds(ticks)) / sysconf(_SC_CLK_TCK);
}

}  // namespace

void CloseConnection::operator()(pg_conn* connection) const noexcept {
  PQfinish(connection);
}

PostgresqlServer::PostgresqlServer() {
  const char* address = std::getenv("ORLUNE_TEST_POSTGRESQL");
  if (address == nullptr) throw std::runtime_error("run this with scripts/with_postgresql.sh");
  address_ = address;
  connection_ = ConnectTo(address_);
  mainProcess_ = ParentOf(PQbackendPID(connection_.get()));
}

std::uint16_t PostgresqlServer::Port() const {
  return static_cast<std::uint16_t>(std::stoi(PQport(connection_.get())));
}

std::string PostgresqlServer::Address(const std::string& database, std::uint16_t port) const {
  return address_ + "?dbname=" + database + "&port=" + std::to_string(port == 0 ? Port() : port);
}

void PostgresqlServer::MakeDatabase(const std::string& database, const std::filesystem::path& file,
                                    const RegionalSettings& regional) const {
  Run(connection_, "DROP DATABASE IF EXISTS " + database + " WITH (FORCE)");
  Run(connection_, "CREATE DATABASE " + database);
  const std::string address = Address(database) + kNoTimeLimit;
  DatabaseEngines engines(regional);
  InitDatabase(engines.Named(DatabaseAddress::Parse(address)), {std::string(kPassword), false, kToday},
               regional);
  const ServerConnection connection = ConnectTo(address);
  RunEach(connection,
          "SELECT format('DROP INDEX %s', indexrelid::regclass) FROM pg_index JOIN pg_stat_user_tables "
          "ON relid = indrelid WHERE NOT indisprimary");
  CopyRows(file, connection);
  RunEach(connection,
          "SELECT format('SELECT setval(%L, max(%I)) FROM %I', "
          "pg_get_serial_sequence(quote_ident(table_name), column_name), column_name, table_name) "
          "FROM information_schema.columns WHERE is_identity = 'YES' AND table_schema = 'public'");
  PostgresqlDriver(regional).Open(address);  // makes the indexes
  Run(connection, "VACUUM ANALYZE");
  Run(connection, "CHECKPOINT");
}

std::chrono::nanoseconds PostgresqlServer::ProcessorTime() const {
  const std::string main = std::to_string(mainProcess_);
  std::chrono::nanoseconds sum = OwnTime(mainProcess_) + EndedChildrenTime(mainProcess_);
  std::istringstream children(FileText("/proc/" + main + "/task/" + main + "/children"));
  for (int child = 0; children >> child;) sum += OwnTime(child);
  return sum;
}

}  // namespace orlune::bench
