#include "commands/kept_fields.h"

#include "server/utf8.h"

namespace orlune {
namespace {

/// Whether the field had to change.
bool KeepReadable(StoredField& field, access_sql::ColumnType type) {
  if (std::holds_alternative<Unreadable>(field)) {
    field = type == access_sql::ColumnType::kYesNo ? StoredField(false) : StoredField();
    return true;
  }
  auto* text = std::get_if<std::string>(&field);
  if (text == nullptr) return false;
  std::string repaired = RepairUtf8(*text);
  if (repaired == *text) return false;
  *text = std::move(repaired);
  return true;
}

}  // namespace

void KeepReadable(const access_sql::Table& table, StoredRow& row, LostFields& lost) {
  for (std::size_t i = 0; i < row.size(); ++i) {
    const access_sql::Column& column = table.Columns[i];
    if (KeepReadable(row[i], column.Type)) ++lost[{table.Name, column.Name}];
  }
}

}  // namespace orlune
