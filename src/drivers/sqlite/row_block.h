#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "drivers/dialect/translation.h"
#include "drivers/sqlite/running_statement.h"
#include "platform/database.h"

struct sqlite3_stmt;

namespace orlune::sqlite {

/// The current row's field in a column of that type. A text is valid until the statement moves on.
Value ReadField(sqlite3_stmt* row, int column, dialect::ColumnType type);

/// Rows of a query in memory. Never changes, so threads may share it.
class RowBlock {
 public:
  /// Reads the rows of `running` from its next one on: all of them, or the first ones until they take more
  /// than `mostBytes`. Throws DatabaseError.
  RowBlock(const RunningStatement& running, std::size_t mostBytes);
  RowBlock(const RowBlock&) = delete;
  RowBlock& operator=(const RowBlock&) = delete;

  bool IsComplete() const { return isComplete_; }
  std::size_t RowCount() const { return fields_.size() / columns_.size(); }
  /// Throws DatabaseError when there is none of that name.
  int Column(std::string_view name) const { return dialect::FindColumn(columns_, name); }
  const Value& Field(std::size_t row, int column) const {
    return fields_[row * columns_.size() + static_cast<std::size_t>(column)];
  }
  /// The memory that it takes.
  std::size_t Bytes() const;

 private:
  void ReadRow(sqlite3_stmt* row);

  std::vector<dialect::ResultColumn> columns_;
  std::vector<Value> fields_;  // row by row
  std::string texts_;
  bool isComplete_ = false;
};

}  // namespace orlune::sqlite
