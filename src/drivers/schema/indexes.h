#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "drivers/dialect/catalogue.h"
#include "drivers/dialect/engine_sql.h"

namespace orlune::schema {

/// Which rows of its table an index holds.
enum class IndexedRows { kAll, kNotNull, kRepeating };

struct Index {
  std::string_view Name;
  std::string_view Table;
  std::vector<std::string_view> Columns;
  IndexedRows Rows = IndexedRows::kAll;
  std::vector<std::string_view> Covered{};  ///< kept beside, so that queries need not look at the rows
};

/// The indexes for which the tables and columns are there: the queries of a page read through them, whatever
/// the number of rows, and so does what renaming a user changes.
std::vector<const Index*> PossibleIndexes(const dialect::Catalogue& catalogue);

/// Those that are not among the `existing` names, compared whatever their case.
std::vector<const Index*> MissingIndexes(const dialect::Catalogue& catalogue,
                                         std::span<const std::string> existing);

/// The statement that creates an index in an engine's SQL, unless one of its name is there.
std::string CreationOf(const Index& index, const dialect::Table& table, const dialect::EngineSql& engine);

}  // namespace orlune::schema
