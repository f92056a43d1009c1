#include "commands/table_scan.h"

#include <string>

namespace orlune {
namespace {

constexpr std::size_t kBatch = 1000;

}  // namespace

bool TableScan::Next() {
  if (next_ == rows_.size()) {
    rows_ = database_.Rows(table_, rows_.empty() ? kBeforeFirstRow : Number(), kBatch);
    next_ = 0;
    if (rows_.empty()) return false;
  }
  ++next_;
  return true;
}

int TableScan::Column(std::string_view name) const {
  const dialect::Column* column = table_.Find(name);
  return column == nullptr ? -1 : static_cast<int>(column - table_.Columns.data());
}

const StoredField& TableScan::Get(int column) const {
  static const StoredField kNull;
  return column < 0 ? kNull : Row()[static_cast<std::size_t>(column)];
}

std::string_view TableScan::Text(int column) const {
  const auto* text = std::get_if<std::string>(&Get(column));
  return text == nullptr ? std::string_view() : *text;
}

bool TableScan::YesNo(int column) const {
  const auto* isYes = std::get_if<bool>(&Get(column));
  return isYes != nullptr && *isYes;
}

}  // namespace orlune
