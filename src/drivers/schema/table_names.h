#pragma once

#include <string>

#include "drivers/dialect/catalogue.h"

namespace orlune::schema {

/// The columns of a table as a list of SQL.
std::string ColumnList(const dialect::Table& table);
/// The name of its counter. Throws DatabaseError when it has none.
const std::string& CounterName(const dialect::Table& table);

}  // namespace orlune::schema
