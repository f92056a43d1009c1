#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "drivers/dialect/engine_sql.h"

namespace orlune::sqlite {

/// How SQLite writes statements. Its collation and its LIKE ignore case by themselves.
class SqliteSql : public dialect::EngineSql {
 public:
  std::string Declare(const dialect::ColumnDefinition& definition,
                      const dialect::StoredValue& defaultValue) const override;
  std::string Parameter(std::size_t position) const override;
  std::string Fixed(const dialect::StoredValue& value, dialect::ColumnType type,
                    dialect::LiteralUse use) const override;
  std::string Comparable(std::string_view column, dialect::ColumnType type) const override;
  std::string Like(std::string_view pattern) const override;
  std::string SortKey(std::string_view comparable, dialect::ColumnType type,
                      bool isDescending) const override;
  std::string OfFirstInGroup(std::string_view column, std::string_view counter) const override;
  std::string_view RowNumber() const override { return "rowid"; }
  std::string IndexColumns(const std::vector<std::string>& keys,
                           const std::vector<std::string>& covered) const override;
  std::string InsertWithCounter(std::string insert, const dialect::Table& table) const override;
};

}  // namespace orlune::sqlite
