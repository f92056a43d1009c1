#include "drivers/sqlite/connection.h"

#include <string>
#include <utility>

#include "drivers/dialect/naming.h"
#include "drivers/sqlite/result_sets.h"

namespace orlune::sqlite {

SqliteConnection::SqliteConnection(std::shared_ptr<Pool> pool)
    : lease_(std::make_shared<Lease>(std::move(pool))) {}

std::unique_ptr<ResultSet> SqliteConnection::Query(const StatementText& statement) {
  return dialect::Naming(statement, [&]() -> std::unique_ptr<ResultSet> {
    Current().EnsureReading();
    const auto translated = Current().Translated(statement);
    if (translated->Translation.Columns.empty()) throw DatabaseError("not a query");
    RunningStatement running = Current().Start(translated, statement);
    if (Current().IsInTransaction()) return std::make_unique<ReadRows>(std::move(running));
    return std::make_unique<RunningRows>(lease_, std::move(running));
  });
}

void SqliteConnection::Execute(const StatementText& statement) {
  dialect::Naming(statement, [&] {
    const std::string_view refusal = Write(statement);
    if (!refusal.empty()) throw DatabaseError(std::string(refusal));
  });
}

bool SqliteConnection::TryExecute(const StatementText& statement) {
  try {
    return Write(statement).empty();
  } catch (const DatabaseError&) {
    return false;
  }
}

void SqliteConnection::ExecuteInOrder(std::span<const StatementText> statements) {
  Begin();
  try {
    for (const StatementText& statement : statements) Execute(statement);
  } catch (const DatabaseError&) {
    Commit();
    throw;
  }
  Commit();
}

void SqliteConnection::Begin() {
  if (Current().IsInTransaction()) throw DatabaseError("a transaction is open already");
  LeaveToOpenQueries();
  Current().EndReading();
  Current().BeginTransaction();
}

void SqliteConnection::Commit() {
  if (!Current().IsInTransaction()) throw DatabaseError("no transaction is open");
  Current().Commit();
}

void SqliteConnection::Rollback() noexcept {
  if (Current().IsInTransaction()) Current().Rollback();
}

/// Runs a statement without rows, or returns why it can only fail.
std::string_view SqliteConnection::Write(const StatementText& statement) {
  Current().EnsureReading();
  auto translated = Current().Translated(statement);
  if (!translated->Translation.Columns.empty()) throw DatabaseError("a query, not a statement without rows");
  if (!translated->Translation.Refusal.empty()) return translated->Translation.Refusal;
  if (LeaveToOpenQueries()) translated = Current().Translated(statement);
  const RunningStatement running = Current().Start(translated, statement);
  if (translated->Translation.ChangesSchema) Current().ForgetTables();
  Current().EndReading();
  Run(running.Handle());
  return {};
}

/// An open query keeps its database in the state that it reads, which could not be written to when somebody
/// else wrote since; so what follows goes to another database.
bool SqliteConnection::LeaveToOpenQueries() {
  const bool hasOpenQueries = lease_.use_count() > 1;
  if (hasOpenQueries) lease_ = std::make_shared<Lease>(lease_->Origin());
  return hasOpenQueries;
}

}  // namespace orlune::sqlite
