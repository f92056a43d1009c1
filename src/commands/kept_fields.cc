#include "commands/kept_fields.h"

#include "base/utf8.h"

namespace orlune {
namespace {

/// Whether the field had to change.
bool KeepReadable(StoredField& field, dialect::ColumnType type) {
  if (std::holds_alternative<Unreadable>(field)) {
    field = type == dialect::ColumnType::kYesNo ? StoredField(false) : StoredField();
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

void KeepReadable(const dialect::Table& table, StoredRow& row, LostFields& lost) {
  for (std::size_t i = 0; i < row.size(); ++i) {
    const dialect::Column& column = table.Columns[i];
    if (KeepReadable(row[i], column.Type)) ++lost[{table.Name, column.Name}];
  }
}

}  // namespace orlune
