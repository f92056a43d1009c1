#pragma once

#include <memory>
#include <string_view>

#include "drivers/sqlite/pool.h"
#include "platform/database.h"

namespace orlune::sqlite {

/// Queries read from one state of the file until the next write. The rows of an open query do not change: a
/// write goes to another database of the pool; in a transaction all rows of a query are read at once.
class SqliteConnection : public Connection {
 public:
  /// Throws DatabaseError.
  explicit SqliteConnection(std::shared_ptr<Pool> pool);

  std::unique_ptr<ResultSet> Query(const StatementText& statement) override;
  void Execute(const StatementText& statement) override;
  bool TryExecute(const StatementText& statement) override;
  void ExecuteInOrder(std::span<const StatementText> statements) override;
  void Begin() override;
  void Commit() override;
  void Rollback() noexcept override;

 private:
  Database& Current() { return lease_->Leased(); }
  std::string_view Write(const StatementText& statement);
  void LeaveToOpenQueries();

  std::shared_ptr<Lease> lease_;
};

}  // namespace orlune::sqlite
