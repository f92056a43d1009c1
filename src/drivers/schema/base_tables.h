#pragma once

#include <string>
#include <vector>

#include "drivers/dialect/ast.h"
#include "drivers/dialect/engine_sql.h"
#include "drivers/dialect/evaluation.h"

namespace orlune::schema {

struct BaseColumn {
  dialect::ColumnDefinition Definition;
  dialect::StoredValue Default;  ///< of new rows, where that is not the type's own
};

struct BaseTable {
  std::string Name;
  std::vector<BaseColumn> Columns;
};

/// The tables that every database starts with. The schema upgrade brings them up to date.
const std::vector<BaseTable>& BaseTables();

/// The statement that creates one of them in an engine's SQL.
std::string CreationOf(const BaseTable& table, const dialect::EngineSql& engine);

}  // namespace orlune::schema
