#include "drivers/sqlite/result_sets.h"

#include <utility>

#include <sqlite3.h>

#include "drivers/dialect/evaluation.h"

namespace orlune::sqlite {

using dialect::ColumnType;

namespace {

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

}  // namespace

RunningRows::RunningRows(std::shared_ptr<Lease> lease, RunningStatement running)
    : lease_(std::move(lease)), origin_(running.Origin()), running_(std::move(running)) {}

bool RunningRows::Next() {
  if (!running_) return false;
  if (Step(running_->Handle())) return true;
  running_.reset();
  lease_.reset();
  return false;
}

int RunningRows::Column(std::string_view name) const {
  return dialect::FindColumn(origin_->Translation, name);
}

Value RunningRows::Get(int column) const {
  if (!running_) return {};
  return ReadField(running_->Handle(), column,
                   origin_->Translation.Columns[static_cast<std::size_t>(column)].Type);
}

ReadRows::ReadRows(RunningStatement running) : origin_(running.Origin()) {
  while (Step(running.Handle())) {
    int column = 0;
    for (const dialect::ResultColumn& described : origin_->Translation.Columns) {
      Value field = ReadField(running.Handle(), column++, described.Type);
      if (auto* text = std::get_if<std::string_view>(&field)) *text = texts_.emplace_back(*text);
      fields_.push_back(field);
    }
  }
}

bool ReadRows::Next() {
  if (nextRow_ * origin_->Translation.Columns.size() >= fields_.size()) return false;
  ++nextRow_;
  return true;
}

int ReadRows::Column(std::string_view name) const {
  return dialect::FindColumn(origin_->Translation, name);
}

Value ReadRows::Get(int column) const {
  return fields_[(nextRow_ - 1) * origin_->Translation.Columns.size() + static_cast<std::size_t>(column)];
}

}  // namespace orlune::sqlite
