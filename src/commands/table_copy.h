#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "commands/copy_progress.h"
#include "commands/kept_fields.h"
#include "drivers/dialect/catalogue.h"
#include "drivers/schema/database_maintenance.h"

namespace orlune {

/// Copies the rows of `table` above the target's highest number, and raises its counter to the source's.
/// Throws DatabaseError.
void CopyTable(const dialect::Table& table, DatabaseMaintenance& source, DatabaseMaintenance& target,
               CopyProgress& progress);

/// What a copy and its source are compared by.
struct TableSummary {
  std::int64_t Rows = 0;
  std::string Checksum;

  friend bool operator==(const TableSummary&, const TableSummary&) = default;
};

/// Summarises the rows of `table` as a copy keeps them; counts in `lost` what it cannot. `whose` is "source"
/// or "copy", for the progress. Throws DatabaseError.
TableSummary Summarise(const dialect::Table& table, DatabaseMaintenance& database, std::string_view whose,
                       LostFields& lost, CopyProgress& progress);

}  // namespace orlune
