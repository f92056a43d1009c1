#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "drivers/postgresql/pool.h"
#include "platform/database.h"

namespace orlune::postgresql {

/// Queries read from one state of the database until the next write, and all rows of a query come at once. In
/// a transaction, which is the only writer meanwhile, the failure of `Execute` surfaces in a later statement,
/// in `Commit` at the latest.
class PostgresqlConnection : public Connection {
 public:
  /// Throws DatabaseError.
  PostgresqlConnection(const std::shared_ptr<Pool>& pool, Access access) : access_(access), lease_(pool) {}

  std::unique_ptr<ResultSet> Query(const StatementText& statement) override;
  void Prefetch(const StatementText& query) override;
  void Execute(const StatementText& statement) override;
  bool TryExecute(const StatementText& statement) override;
  void ExecuteInOrder(std::span<const StatementText> statements) override;
  std::int64_t ChangeHorizon() override;
  void Begin() override;
  void Commit() override;
  void Rollback() noexcept override;

 private:
  /// A query, perhaps before its rows are needed. Either it was sent, or its rows have been kept and it is
  /// sent only if they turn out to be those of another state.
  struct Asked {
    std::vector<ValueSpan> Values;
    std::shared_ptr<CachedStatement> Statement;
    ReplyPtr Reply;
    KeptReplyPtr Kept;
  };

  Database& Current() { return lease_.Leased(); }
  Asked FindOrSend(const StatementText& query);
  Asked Send(const StatementText& query);
  void SendHeldBack();
  Asked TakePrefetched(const StatementText& query);
  void Receive(Asked& asked, const StatementText& query);
  std::unique_ptr<ResultSet> Ask(const StatementText& query);
  /// Whether the failure of a statement is awaited and leaves the transaction as it was.
  enum class Failure { kEndsTransaction, kIsAwaited };
  /// Returns why the statement was not even sent, or "". An exception would be expensive: every page tries to
  /// create tables that exist.
  std::string Run(const StatementText& statement, Failure failure);
  void RunAll(std::span<const StatementText> statements, Failure failure);
  void Write(CachedStatement& translated, const StatementText& statement, Failure failure);

  const Access access_;
  Lease lease_;
  std::multimap<std::string, Asked, std::less<>> prefetched_;  // by the text of the query
  bool isUnused_ = true;  // nothing was read or written yet: a lost connection can be replaced
};

}  // namespace orlune::postgresql
