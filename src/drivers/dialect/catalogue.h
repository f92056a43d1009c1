#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orlune::dialect {

/// What a column holds. A statement can create any of them but kDate and kTime, which only base tables have.
enum class ColumnType { kCounter, kLong, kYesNo, kText, kMemo, kDate, kTime, kDateTime };

/// How an error message calls what fits a column, such as "a date".
std::string_view DescribeType(ColumnType type);

/// Names of tables and columns are equal whatever their case.
bool SameName(std::string_view one, std::string_view other);

struct Column {
  std::string Name;
  ColumnType Type = ColumnType::kText;

  friend bool operator==(const Column&, const Column&) = default;
};

struct Table {
  std::string Name;
  std::vector<Column> Columns;

  /// The column of that name, or null.
  const Column* Find(std::string_view name) const;
  /// The column that numbers the rows, or null.
  const Column* Counter() const;
};

/// The tables of one database.
struct Catalogue {
  std::vector<Table> Tables;

  /// The table of that name, or null.
  const Table* Find(std::string_view name) const;
};

}  // namespace orlune::dialect
