#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "drivers/sqlite/pool.h"
#include "drivers/sqlite/running_statement.h"
#include "platform/database.h"

namespace orlune::sqlite {

/// The rows of a statement while it runs. Keeps its database from going back to the pool.
class RunningRows : public ResultSet {
 public:
  RunningRows(std::shared_ptr<Lease> lease, RunningStatement running);

  bool Next() override;
  int Column(std::string_view name) const override;
  Value Get(int column) const override;

 private:
  std::shared_ptr<Lease> lease_;
  std::shared_ptr<const CachedStatement> origin_;
  std::optional<RunningStatement> running_;
};

/// Rows that were all read beforehand; later statements do not touch them.
class ReadRows : public ResultSet {
 public:
  explicit ReadRows(RunningStatement running);

  bool Next() override;
  int Column(std::string_view name) const override;
  Value Get(int column) const override;

 private:
  std::shared_ptr<const CachedStatement> origin_;
  std::vector<Value> fields_;  // row by row
  std::deque<std::string> texts_;
  std::size_t nextRow_ = 0;
};

}  // namespace orlune::sqlite
