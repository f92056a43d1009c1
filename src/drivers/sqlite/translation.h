#pragma once

#include <string>
#include <vector>

#include "drivers/access_sql/ast.h"
#include "platform/regional_settings.h"

namespace orlune::sqlite {

struct ResultColumn {
  std::string Name;
  access_sql::ColumnType Type;
};

/// One "?" of the SQL: what it stands for, and the column that says how to store it.
struct Parameter {
  access_sql::Literal Source;
  access_sql::Column Target;
};

/// A statement in SQLite's SQL. Serves every statement of the same shape.
struct Translation {
  std::string Sql;
  std::vector<Parameter> Parameters;  ///< in the order of the "?"
  std::vector<ResultColumn> Columns;  ///< of a query's rows
  bool ChangesSchema = false;
  std::string
      Refusal;  ///< why the statement can only fail, such as that the column exists; there is no SQL then
};

/// Rows with equal sort keys, and those of a query without an order, come in the order of the first table's
/// counter. Fixed literals stay in the SQL, where SQLite's planner sees them. Throws DatabaseError for
/// unknown tables and columns and for literals that do not fit.
Translation Translate(const access_sql::Statement& statement, const access_sql::Catalogue& catalogue,
                      const RegionalSettings& regional);

}  // namespace orlune::sqlite
