#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/database.h"
#include "store/statement.h"

namespace orlune {

/// Runs a query. Throws DatabaseError.
std::unique_ptr<ResultSet> OpenQuery(Connection& database, const Statement& sql);
/// Runs a statement without rows; `failed` tells whether it raised an error, which is swallowed.
void ExecuteQuiet(Connection& database, const Statement& sql, bool& failed);

/// The SQL of one value. Null for nothing, "" and the empty choice "- - - -". After a leading "*", a number,
/// yes, no or Null stands as it is; every other text is quoted, star included.
Statement SqlValue(std::optional<std::string_view> value);

/// The SQL of a text that a person typed: Null for "", otherwise quoted, whatever it begins with.
Statement SqlText(std::string_view text);

struct ColumnValue {
  SqlLiteral Column;
  Statement Value;  ///< as from `SqlValue`
};

enum class SqlMode { kInsert, kUpdate };

/// An INSERT of one row, or an UPDATE of the rows that `where` ("WHERE ...") names.
Statement BuildSql(SqlMode mode, SqlLiteral table, std::span<const ColumnValue> pairs,
                   const Statement& where = {});

/// The items joined with ", ", each between apostrophes, as an In (...) takes them.
Statement QuotedList(std::span<const std::string> items);

/// The query that `NameExists` asks.
Statement NameQuery(SqlLiteral column, SqlLiteral table, std::string_view name);
/// Whether a row of `table` has the Name `name`; names are compared ignoring case.
bool NameExists(Connection& database, SqlLiteral column, SqlLiteral table, std::string_view name);
/// A name of lower-case letters and digits made from `text` that no row of `table` has yet.
std::string MakeInternalName(Connection& database, std::string_view text, SqlLiteral column,
                             SqlLiteral table);

/// An UPDATE of the row that `where` names, or an INSERT when it is empty.
Statement SaveRow(SqlLiteral table, std::span<const ColumnValue> pairs, const Statement& where);

}  // namespace orlune
