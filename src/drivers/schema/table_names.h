#pragma once

#include <string>

#include "drivers/access_sql/catalogue.h"

namespace orlune::schema {

/// The columns of a table as a list of SQL.
std::string ColumnList(const access_sql::Table& table);
/// The name of its counter. Throws DatabaseError when it has none.
const std::string& CounterName(const access_sql::Table& table);

}  // namespace orlune::schema
