#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>

#include "drivers/dialect/catalogue.h"
#include "drivers/schema/database_maintenance.h"

namespace orlune {

/// How many fields a copy cannot keep unchanged, by table and column.
using LostFields = std::map<std::pair<std::string, std::string>, std::int64_t>;

/// Makes a row storable in every engine: an unreadable field becomes Null (no for a yes/no), as in pages, and
/// invalid UTF-8 becomes U+FFFD. Counts such fields in `lost`.
void KeepReadable(const dialect::Table& table, StoredRow& row, LostFields& lost);

}  // namespace orlune
