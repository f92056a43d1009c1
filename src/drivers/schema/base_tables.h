#pragma once

#include <string>
#include <vector>

#include "drivers/access_sql/ast.h"
#include "drivers/access_sql/engine_sql.h"
#include "drivers/access_sql/evaluation.h"

namespace orlune::schema {

struct BaseColumn {
  access_sql::ColumnDefinition Definition;
  access_sql::StoredValue Default;  ///< of new rows, where that is not the type's own
};

struct BaseTable {
  std::string Name;
  std::vector<BaseColumn> Columns;
};

/// The tables that every database starts with. The schema upgrade brings them up to date.
const std::vector<BaseTable>& BaseTables();

/// The statement that creates one of them in an engine's SQL.
std::string CreationOf(const BaseTable& table, const access_sql::EngineSql& engine);

}  // namespace orlune::schema
