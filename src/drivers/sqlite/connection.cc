#include "drivers/sqlite/connection.h"

#include <limits>
#include <string>
#include <utility>

#include "drivers/dialect/naming.h"
#include "drivers/sqlite/result_sets.h"

namespace orlune::sqlite {

namespace {

constexpr std::size_t kUnlimited = std::numeric_limits<std::size_t>::max();

}  // namespace

SqliteConnection::SqliteConnection(std::shared_ptr<Pool> pool)
    : lease_(std::make_shared<Lease>(std::move(pool))) {}

std::unique_ptr<ResultSet> SqliteConnection::Query(const StatementText& statement) {
  return dialect::Naming(statement, [&]() -> std::unique_ptr<ResultSet> {
    Current().EnsureReading();
    if (auto kept = Current().FindKept(statement)) return std::make_unique<ReadRows>(std::move(kept));
    const auto translated = Current().Translated(statement);
    if (translated->Translation.Columns.empty()) throw DatabaseError("not a query");
    RunningStatement running = Current().Start(translated, statement);
    const bool needsAll = Current().IsInTransaction();
    auto rows = std::make_shared<const RowBlock>(running, needsAll ? kUnlimited : Current().MostKeptBytes());
    if (!rows->IsComplete())
      return std::make_unique<RunningRows>(lease_, std::move(running), std::move(rows));
    Current().Keep(statement, *translated, rows);
    return std::make_unique<ReadRows>(std::move(rows));
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

/// Runs a statement without rows, in a transaction of its own unless one is open, or returns why it can only
/// fail.
std::string_view SqliteConnection::Write(const StatementText& statement) {
  Current().EnsureReading();
  const auto translated = Current().Translated(statement);
  if (!translated->Translation.Columns.empty()) throw DatabaseError("a query, not a statement without rows");
  if (!translated->Translation.Refusal.empty()) return translated->Translation.Refusal;
  if (Current().IsInTransaction()) {
    Current().Execute(translated, statement);
    return {};
  }
  Begin();
  try {
    const std::string_view refusal = Write(statement);
    Commit();
    return refusal;
  } catch (const DatabaseError&) {
    Rollback();
    throw;
  }
}

/// An open query keeps its database in the state that it reads, which could not be written to when somebody
/// else wrote since; so what follows goes to another database.
void SqliteConnection::LeaveToOpenQueries() {
  if (lease_.use_count() > 1) lease_ = std::make_shared<Lease>(lease_->Origin());
}

}  // namespace orlune::sqlite
