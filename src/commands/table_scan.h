#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "drivers/dialect/catalogue.h"
#include "drivers/schema/database_maintenance.h"

namespace orlune {

/// Reads a table from its first row to its last, a batch at a time.
class TableScan {
 public:
  /// The table's first column is its counter. Both outlive the scan.
  TableScan(DatabaseMaintenance& database, const dialect::Table& table)
      : database_(database), table_(table) {}

  /// Moves to the next row, at first to the first; false past the last one. Throws DatabaseError.
  bool Next();

  /// The position of a column, as the functions below take it; below 0 when the table lacks it.
  int Column(std::string_view name) const;
  /// Null for a column that the table lacks.
  const StoredField& Get(int column) const;
  /// "" for Null and for a field of another type.
  std::string_view Text(int column) const;
  /// No for a field of another type.
  bool YesNo(int column) const;
  /// The counter of the row.
  std::int64_t Number() const { return std::get<std::int64_t>(Row().front()); }
  const StoredRow& Row() const { return rows_[next_ - 1]; }

 private:
  DatabaseMaintenance& database_;
  const dialect::Table& table_;
  std::vector<StoredRow> rows_;
  std::size_t next_ = 0;
};

}  // namespace orlune
