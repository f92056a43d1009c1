#include "drivers/postgresql/result_rows.h"

#include <charconv>
#include <string>
#include <utility>

#include <libpq-fe.h>

#include "drivers/dialect/evaluation.h"

namespace orlune::postgresql {

using dialect::ColumnType;

namespace {

std::int64_t NumberOf(std::string_view text) {
  std::int64_t number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

}  // namespace

std::string_view FieldText(const ResultHandle& result, int row, int column) {
  return {PQgetvalue(result.get(), row, column),
          static_cast<std::size_t>(PQgetlength(result.get(), row, column))};
}

ResultRows::ResultRows(std::shared_ptr<const dialect::Translation> translation,
                       std::shared_ptr<const Reply> reply)
    : translation_(std::move(translation)), reply_(std::move(reply)) {}

bool ResultRows::Next() {
  if (row_ + 1 >= PQntuples(reply_->Result.get())) return false;
  ++row_;
  return true;
}

int ResultRows::Column(std::string_view name) const {
  return dialect::FindColumn(translation_->Columns, name);
}

Value ResultRows::Get(int column) const {
  const ColumnType type = translation_->Columns[static_cast<std::size_t>(column)].Type;
  if (PQgetisnull(reply_->Result.get(), row_, column) == 1)
    return type == ColumnType::kYesNo ? Value(false) : Value();
  const std::string_view text = FieldText(reply_->Result, row_, column);
  switch (type) {
    case ColumnType::kCounter:
    case ColumnType::kLong:
      return NumberOf(text);
    case ColumnType::kYesNo:
      return text == "t";
    default:
      return dialect::ReadStoredText(type, text);
  }
}

}  // namespace orlune::postgresql
