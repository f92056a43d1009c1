#include "drivers/postgresql/connection.h"

#include <algorithm>
#include <utility>

#include "drivers/dialect/naming.h"
#include "drivers/dialect/shape.h"
#include "drivers/postgresql/result_rows.h"

namespace orlune::postgresql {

namespace {

/// Prefetched queries whose rows were not used yet; more are not prefetched.
constexpr std::size_t kMaxPrefetched = 1024;

}  // namespace

std::unique_ptr<ResultSet> PostgresqlConnection::Query(const StatementText& statement) {
  return dialect::Naming(statement, [&] { return Ask(statement); });
}

void PostgresqlConnection::Prefetch(const StatementText& query) {
  if (Current().IsInTransaction() || prefetched_.size() >= kMaxPrefetched) return;
  try {
    prefetched_.emplace(query.Text, FindOrSend(query));
  } catch (const DatabaseError&) {
    // `Query` fails in the same way.
  }
}

void PostgresqlConnection::Execute(const StatementText& statement) {
  RunAll({&statement, 1}, Failure::kEndsTransaction);
}

bool PostgresqlConnection::TryExecute(const StatementText& statement) {
  try {
    return Run(statement, Failure::kIsAwaited).empty();
  } catch (const DatabaseUnavailable&) {
    throw;
  } catch (const DatabaseError&) {
    return false;
  }
}

/// One round trip when all succeed. A failure is reported late and rolls back the statements before it as
/// well, so all are run again, waiting for each.
void PostgresqlConnection::ExecuteInOrder(std::span<const StatementText> statements) {
  Begin();
  try {
    RunAll(statements, Failure::kEndsTransaction);
    return Commit();
  } catch (const DatabaseUnavailable&) {
    Rollback();
    throw;  // the commit may have happened
  } catch (const DatabaseError&) {
    Rollback();
  }
  Begin();
  try {
    RunAll(statements, Failure::kIsAwaited);
  } catch (const DatabaseError&) {
    Commit();
    throw;
  }
  Commit();
}

std::int64_t PostgresqlConnection::ChangeHorizon() {
  try {
    return Current().ChangeHorizon();
  } catch (const DatabaseError&) {
    if (!isUnused_ || Current().IsAlive()) throw;
    lease_.Reconnect();
    prefetched_.clear();
    return Current().ChangeHorizon();
  }
}

void PostgresqlConnection::Begin() {
  if (Current().IsInTransaction()) throw DatabaseError("a transaction is open already");
  if (access_ == Access::kRead) throw WriteRefused();
  prefetched_.clear();
  isUnused_ = false;
  Current().BeginTransaction();
}

void PostgresqlConnection::Commit() {
  if (!Current().IsInTransaction()) throw DatabaseError("no transaction is open");
  Current().Commit();
}

void PostgresqlConnection::Rollback() noexcept {
  if (Current().IsInTransaction()) Current().Rollback();
}

PostgresqlConnection::Asked PostgresqlConnection::FindOrSend(const StatementText& query) {
  KeptReplyPtr kept = Current().FindKept(query);
  if (!kept) return Send(query);
  Current().EnsureReading();
  return {{query.Values.begin(), query.Values.end()}, nullptr, nullptr, std::move(kept)};
}

PostgresqlConnection::Asked PostgresqlConnection::Send(const StatementText& query) {
  auto translated = Current().Translated(query);
  if (translated->Translation.Columns.empty()) throw DatabaseError("not a query");
  Current().EnsureReading();
  ReplyPtr reply = Current().Start(*translated, query);
  return {{}, std::move(translated), std::move(reply), nullptr};
}

/// Sends the prefetched queries whose kept rows are of another state than the one that is read.
void PostgresqlConnection::SendHeldBack() {
  for (auto next = prefetched_.begin(); next != prefetched_.end();) {
    const auto prefetched = next++;
    if (!prefetched->second.Kept || Current().Reads(*prefetched->second.Kept)) continue;
    const auto stale = prefetched_.extract(prefetched);
    Prefetch({stale.key(), stale.mapped().Values});
  }
}

/// Removes the query from the prefetched ones; empty when it is not among them.
PostgresqlConnection::Asked PostgresqlConnection::TakePrefetched(const StatementText& query) {
  const auto [begin, end] = prefetched_.equal_range(query.Text);
  const auto found = std::find_if(begin, end, [](const auto& prefetched) {
    return prefetched.second.Kept || prefetched.second.Reply->Now != Reply::State::kFailed;
  });
  if (found == end) return {};
  return std::move(prefetched_.extract(found).mapped());
}

/// Makes sure that the rows of the query have come. Throws DatabaseError.
void PostgresqlConnection::Receive(Asked& asked, const StatementText& query) {
  if (asked.Kept) {
    if (Current().Reads(*asked.Kept)) return;
    asked = Send(query);
    SendHeldBack();
  }
  Current().Require(*asked.Reply);
}

std::unique_ptr<ResultSet> PostgresqlConnection::Ask(const StatementText& query) {
  Asked asked = TakePrefetched(query);
  const bool wasPrefetched = asked.Kept || asked.Reply;
  if (!wasPrefetched) asked = FindOrSend(query);
  try {
    Receive(asked, query);
  } catch (const DatabaseError&) {
    prefetched_.clear();
    const bool wasLostBefore = isUnused_ && !Current().IsAlive();
    if (wasLostBefore) lease_.Reconnect();
    // Otherwise it may have failed with another one of its batch.
    if (!wasLostBefore && !wasPrefetched) throw;
    asked = Send(query);
    Receive(asked, query);
  }
  isUnused_ = false;
  if (asked.Kept) return std::make_unique<ResultRows>(asked.Kept->Translation, asked.Kept->Rows);
  Current().Keep(query, asked.Statement, asked.Reply);
  const auto* translation = &asked.Statement->Translation;
  return std::make_unique<ResultRows>(
      std::shared_ptr<const dialect::Translation>(std::move(asked.Statement), translation),
      std::move(asked.Reply));
}

std::string PostgresqlConnection::Run(const StatementText& statement, Failure failure) {
  return dialect::Naming(statement, [&] {
    const auto translated = Current().Translated(statement);
    if (translated->Translation.Refusal.empty()) Write(*translated, statement, failure);
    return translated->Translation.Refusal;
  });
}

void PostgresqlConnection::RunAll(std::span<const StatementText> statements, Failure failure) {
  for (const StatementText& statement : statements) {
    const std::string refusal = Run(statement, failure);
    if (!refusal.empty()) throw DatabaseError(refusal + " in: " + dialect::MaskedText(statement));
  }
}

void PostgresqlConnection::Write(CachedStatement& translated, const StatementText& statement,
                                 Failure failure) {
  if (!translated.Translation.Columns.empty()) throw DatabaseError("a query, not a statement without rows");
  if (access_ == Access::kRead) throw WriteRefused();
  prefetched_.clear();
  isUnused_ = false;
  if (!Current().IsInTransaction()) {
    Current().RunAlone(translated, statement);
  } else if (failure == Failure::kIsAwaited) {
    Current().RunWithSavepoint(translated, statement);
  } else {
    Current().RunInTransaction(translated, statement);
  }
}

}  // namespace orlune::postgresql
