#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/regional_settings.h"
#include "drivers/dialect/ast.h"
#include "drivers/dialect/engine_sql.h"

namespace orlune::dialect {

struct ResultColumn {
  std::string Name;
  ColumnType Type;
};

/// One parameter of the SQL: what it stands for, and the column that says how to store it.
struct Parameter {
  Literal Source;
  Column Target;
  LiteralUse Use;
};

/// A statement in an engine's SQL. Serves every statement of the same shape.
struct Translation {
  std::string Sql;
  std::vector<Parameter> Parameters;  ///< in their order
  std::vector<ResultColumn> Columns;  ///< of a query's rows
  std::vector<std::string> Tables;    ///< that it reads or writes; none when it changes the schema
  bool ChangesSchema = false;
  std::string
      Refusal;  ///< why the statement can only fail, such as that the column exists; there is no SQL then
};

/// Rows with equal sort keys, and those of a query without an order, come in the order of the first table's
/// counter. Fixed literals stay in the SQL, where the engine's planner sees them. Throws DatabaseError for
/// unknown tables and columns and for literals that do not fit.
Translation Translate(const Statement& statement, const Catalogue& catalogue, const EngineSql& engine,
                      const RegionalSettings& regional);

/// The position of a result's column, whatever the case of its name. Throws DatabaseError when there is none.
int FindColumn(std::span<const ResultColumn> columns, std::string_view name);

}  // namespace orlune::dialect
