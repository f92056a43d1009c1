#include "drivers/sqlite/connection.h"

#include <limits>
#include <string>
#include <utility>

#include "drivers/dialect/naming.h"
#include "drivers/sqlite/result_sets.h"

namespace orlune::sqlite {
namespace {

constexpr std::size_t kUnlimited = std::numeric_limits<std::size_t>::max();

/// Runs a statement without rows, or returns why it can only fail.
std::string RunAsWriter(Database& writer, const StatementText& statement) {
  writer.EnsureReading();
  const auto translated = writer.Translated(statement);
  if (!translated->Translation.Columns.empty()) throw DatabaseError("a query, not a statement without rows");
  if (!translated->Translation.Refusal.empty()) return translated->Translation.Refusal;
  writer.Execute(translated, statement);
  return {};
}

}  // namespace

SqliteConnection::SqliteConnection(std::shared_ptr<Pool> pool, Access access)
    : access_(access), lease_(std::make_shared<Lease>(std::move(pool))) {}

std::unique_ptr<ResultSet> SqliteConnection::Query(const StatementText& statement) {
  return dialect::Naming(statement, [&]() -> std::unique_ptr<ResultSet> {
    Database& database = transaction_ ? transaction_->Current() : lease_->Leased();
    database.EnsureReading();
    if (auto kept = database.FindKept(statement)) return std::make_unique<ReadRows>(std::move(kept));
    const auto translated = database.Translated(statement);
    if (translated->Translation.Columns.empty()) throw DatabaseError("not a query");
    RunningStatement running = database.Start(translated, statement);
    auto rows =
        std::make_shared<const RowBlock>(running, transaction_ ? kUnlimited : database.MostKeptBytes());
    if (!rows->IsComplete())
      return std::make_unique<RunningRows>(lease_, std::move(running), std::move(rows));
    database.Keep(statement, *translated, rows);
    return std::make_unique<ReadRows>(std::move(rows));
  });
}

void SqliteConnection::Execute(const StatementText& statement) {
  dialect::Naming(statement, [&] {
    std::string refusal = Write(statement);
    if (!refusal.empty()) throw DatabaseError(refusal);
  });
}

bool SqliteConnection::TryExecute(const StatementText& statement) {
  try {
    return Write(statement).empty();
  } catch (const DatabaseUnavailable&) {
    throw;
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
  if (transaction_) throw DatabaseError("a transaction is open already");
  if (access_ == Access::kRead) throw WriteRefused();
  EndReading();
  transaction_ = std::make_unique<WriteTurn>(lease_->Origin()->Writer());
}

void SqliteConnection::Commit() {
  if (!transaction_) throw DatabaseError("no transaction is open");
  const std::unique_ptr<WriteTurn> ending = std::move(transaction_);
  ending->Commit();
}

void SqliteConnection::Rollback() noexcept {
  transaction_ = nullptr;
}

/// Runs a statement without rows, or returns why it can only fail.
std::string SqliteConnection::Write(const StatementText& statement) {
  if (transaction_) return RunAsWriter(transaction_->Current(), statement);
  lease_->Leased().EnsureReading();
  const auto translated = lease_->Leased().Translated(statement);
  if (!translated->Translation.Refusal.empty()) return translated->Translation.Refusal;
  Begin();
  try {
    std::string refusal = RunAsWriter(transaction_->Current(), statement);
    Commit();
    return refusal;
  } catch (...) {
    Rollback();
    throw;
  }
}

/// What is read after a write is in the state that it left. The rows of open queries stay in theirs.
void SqliteConnection::EndReading() {
  const bool hasOpenQueries = lease_.use_count() > 1;
  if (hasOpenQueries) lease_ = std::make_shared<Lease>(lease_->Origin());
  lease_->Leased().EndReading();
}

}  // namespace orlune::sqlite
