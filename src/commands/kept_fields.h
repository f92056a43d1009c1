#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>

#include "drivers/dialect/catalogue.h"
#include "drivers/schema/database_maintenance.h"

namespace orlune {

/// How many fields a copy cannot keep as they stand, by table and column.
using LostFields = std::map<std::pair<std::string, std::string>, std::int64_t>;

/// Makes of a row what every engine can hold: what its column's type cannot read becomes Null (no for a
/// yes/no), as pages read it too, and of a text the bytes that are no UTF-8 become U+FFFD. Counts each such
/// field in `lost`.
void KeepReadable(const dialect::Table& table, StoredRow& row, LostFields& lost);

}  // namespace orlune
