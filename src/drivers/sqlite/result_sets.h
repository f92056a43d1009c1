#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include "drivers/sqlite/pool.h"
#include "drivers/sqlite/row_block.h"
#include "drivers/sqlite/running_statement.h"
#include "platform/database.h"

namespace orlune::sqlite {

/// All rows of a query, in memory; later statements do not touch them.
class ReadRows : public ResultSet {
 public:
  explicit ReadRows(std::shared_ptr<const RowBlock> rows) : rows_(std::move(rows)) {}

  bool Next() override;
  int Column(std::string_view name) const override { return rows_->Column(name); }
  Value Get(int column) const override { return rows_->Field(next_ - 1, column); }

 private:
  std::shared_ptr<const RowBlock> rows_;
  std::size_t next_ = 0;
};

/// The first rows of a query from memory, and the rest while it runs. Keeps its database from going back to
/// the pool.
class RunningRows : public ResultSet {
 public:
  RunningRows(std::shared_ptr<Lease> lease, RunningStatement running, std::shared_ptr<const RowBlock> first);

  bool Next() override;
  int Column(std::string_view name) const override { return first_->Column(name); }
  Value Get(int column) const override;

 private:
  std::shared_ptr<Lease> lease_;
  std::optional<RunningStatement> running_;
  std::shared_ptr<const RowBlock> first_;
  std::size_t next_ = 0;
};

}  // namespace orlune::sqlite
