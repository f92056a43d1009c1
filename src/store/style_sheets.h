#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "model/record_choice.h"
#include "model/style_sheet.h"
#include "store/query.h"

namespace orlune {

// The table StyleSheets: the colour schemes. Functions that write throw DatabaseError.

Query<std::vector<StyleSheetChoice>> StyleSheetChoices();
Query<std::vector<int>> StyleSheetIds();

/// All colour schemes by name; `IntName` is the file name.
Query<std::vector<RecordChoice>> StyleSheetRecords();
/// Nothing when there is no such scheme.
Query<std::optional<NamedFile>> StyleSheetWithId(std::int64_t id);
/// Updates the scheme `id`, or inserts one when there is no `id`.
void SaveStyleSheet(Connection& database, std::optional<std::int64_t> id, const NamedFile& sheet);
void DeleteStyleSheet(Connection& database, std::int64_t id);

}  // namespace orlune
