#pragma once

#include <memory>
#include <string>

#include "drivers/sqlite/pool.h"
#include "platform/database.h"

namespace orlune::sqlite {

/// Queries read from one state of the file until the next write, which goes to the pool's writer. The rows of
/// an open query do not change; in a transaction all rows of a query are read at once.
class SqliteConnection : public Connection {
 public:
  /// Throws DatabaseError.
  SqliteConnection(std::shared_ptr<Pool> pool, Access access);

  std::unique_ptr<ResultSet> Query(const StatementText& statement) override;
  void Execute(const StatementText& statement) override;
  bool TryExecute(const StatementText& statement) override;
  void ExecuteInOrder(std::span<const StatementText> statements) override;
  void Begin() override;
  void Commit() override;
  void Rollback() noexcept override;

 private:
  std::string Write(const StatementText& statement);
  void EndReading();

  const Access access_;
  std::shared_ptr<Lease> lease_;
  std::unique_ptr<WriteTurn> transaction_;
};

}  // namespace orlune::sqlite
