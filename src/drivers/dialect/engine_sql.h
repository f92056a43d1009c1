#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "drivers/dialect/ast.h"
#include "drivers/dialect/evaluation.h"

namespace orlune::dialect {

/// What a literal is for: kept in its column as it is, compared with the column, or a pattern for it.
enum class LiteralUse { kStored, kCompared, kPattern };

/// What the engines write differently. Stateless; column names come quoted and qualified.
class EngineSql {
 public:
  virtual ~EngineSql() = default;

  /// How a column is declared, its name first, with the value of new rows where that is not Null or the
  /// type's own. Throws DatabaseError for a primary key that is not a counter.
  virtual std::string Declare(const ColumnDefinition& definition, const StoredValue& defaultValue) const = 0;
  /// The parameter number `position`, counted from 1.
  virtual std::string Parameter(std::size_t position) const = 0;
  /// A value of the fixed text, for a column of this type.
  virtual std::string Fixed(const StoredValue& value, ColumnType type, LiteralUse use) const = 0;

  /// A column as comparisons use it, so that texts are equal whatever their case.
  virtual std::string Comparable(std::string_view column, ColumnType type) const = 0;
  /// The LIKE after a column, with its pattern.
  virtual std::string Like(std::string_view pattern) const = 0;
  /// One key of an ORDER BY, for a column of this type; Null comes before everything else.
  virtual std::string SortKey(std::string_view comparable, ColumnType type, bool isDescending) const = 0;
  /// A column of the row with the lowest `counter` of those that are grouped.
  virtual std::string OfFirstInGroup(std::string_view column, std::string_view counter) const = 0;
  /// A table's own number of a row, where it has no counter.
  virtual std::string_view RowNumber() const = 0;
  /// The columns of an index, in parentheses: `keys` as `SortKey` gives them, and `covered` ones kept beside.
  virtual std::string IndexColumns(const std::vector<std::string>& keys,
                                   const std::vector<std::string>& covered) const = 0;
  /// An INSERT with a counter, extended so that the table counts on from it.
  virtual std::string InsertWithCounter(std::string insert, const Table& table) const = 0;
};

/// The items with commas between.
std::string Listed(const std::vector<std::string>& items);
/// `name` as an identifier of SQL.
std::string Quoted(std::string_view name);
/// `text` as a literal of SQL.
std::string TextLiteral(std::string_view text);

}  // namespace orlune::dialect
