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
/// Runs a statement without rows; an error is not thrown, but reported in `failed`.
void ExecuteQuiet(Connection& database, const Statement& sql, bool& failed);

/// One value as SQL. Null for nothing, "" and the empty choice "- - - -". A number, yes, no or Null after a
/// leading "*" is not quoted; every other text is, including its star.
Statement SqlValue(std::optional<std::string_view> value);

/// Text entered by a user as SQL: Null for "", otherwise quoted, also when it begins with "*".
Statement SqlText(std::string_view text);

struct ColumnValue {
  SqlLiteral Column;
  Statement Value;  ///< from `SqlValue` or `SqlText`
};

enum class SqlMode { kInsert, kUpdate };

/// An INSERT of one row, or an UPDATE of the rows that match `where` ("WHERE ...").
Statement BuildSql(SqlMode mode, SqlLiteral table, std::span<const ColumnValue> pairs,
                   const Statement& where = {});

/// The items joined with ", ", each between apostrophes, for an In (...).
Statement QuotedList(std::span<const std::string> items);

/// The query of `NameExists`.
Statement NameQuery(SqlLiteral column, SqlLiteral table, std::string_view name);
/// Whether a row of `table` has this `Name`, ignoring case; `column` is any column of the table.
bool NameExists(Connection& database, SqlLiteral column, SqlLiteral table, std::string_view name);
/// A name of lower-case letters and digits, derived from `text`, that no row of `table` has yet;
/// `column` is any column of the table.
std::string MakeInternalName(Connection& database, std::string_view text, SqlLiteral column,
                             SqlLiteral table);

/// An UPDATE of the row that matches `where`, or an INSERT when `where` is empty.
Statement SaveRow(SqlLiteral table, std::span<const ColumnValue> pairs, const Statement& where);

}  // namespace orlune
