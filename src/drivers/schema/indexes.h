#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "drivers/access_sql/catalogue.h"
#include "drivers/access_sql/engine_sql.h"

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
std::vector<const Index*> PossibleIndexes(const access_sql::Catalogue& catalogue);

/// Those that are not among the `existing` names, compared whatever their case.
std::vector<const Index*> MissingIndexes(const access_sql::Catalogue& catalogue,
                                         std::span<const std::string> existing);

/// The statement that creates an index in an engine's SQL, unless one of its name is there.
std::string CreationOf(const Index& index, const access_sql::Table& table,
                       const access_sql::EngineSql& engine);

}  // namespace orlune::schema
