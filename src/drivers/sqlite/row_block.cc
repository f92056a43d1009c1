#include "drivers/sqlite/row_block.h"

#include <sqlite3.h>

#include "drivers/dialect/evaluation.h"

namespace orlune::sqlite {

using dialect::ColumnType;

Value ReadField(sqlite3_stmt* row, int column, ColumnType type) {
  if (sqlite3_column_type(row, column) == SQLITE_NULL) {
    return type == ColumnType::kYesNo ? Value(false) : Value();
  }
  switch (type) {
    case ColumnType::kCounter:
    case ColumnType::kLong:
      return sqlite3_column_int64(row, column);
    case ColumnType::kYesNo:
      return sqlite3_column_int64(row, column) != 0;
    default:
      return dialect::ReadStoredText(type, ColumnText(row, column));
  }
}

RowBlock::RowBlock(const RunningStatement& running, std::size_t mostBytes)
    : columns_(running.Origin()->Translation.Columns) {
  while (!isComplete_ && fields_.size() * sizeof(Value) + texts_.size() <= mostBytes) {
    isComplete_ = !Step(running.Handle());
    if (!isComplete_) ReadRow(running.Handle());
  }
  fields_.shrink_to_fit();
  texts_.shrink_to_fit();
  const char* text = texts_.data();
  for (Value& field : fields_) {
    if (auto* view = std::get_if<std::string_view>(&field)) {
      *view = {text, view->size()};
      text += view->size();
    }
  }
}

/// Leaves texts without their place: `texts_` still moves.
void RowBlock::ReadRow(sqlite3_stmt* row) {
  int number = 0;
  for (const dialect::ResultColumn& column : columns_) {
    const Value& field = fields_.emplace_back(ReadField(row, number++, column.Type));
    if (const auto* text = std::get_if<std::string_view>(&field)) texts_ += *text;
  }
}

std::size_t RowBlock::Bytes() const {
  std::size_t bytes = sizeof(*this) + columns_.capacity() * sizeof(dialect::ResultColumn) +
                      fields_.capacity() * sizeof(Value) + texts_.capacity();
  for (const dialect::ResultColumn& column : columns_) bytes += column.Name.capacity();
  return bytes;
}

}  // namespace orlune::sqlite
