#include "drivers/sqlite/sqlite_sql.h"

#include <algorithm>

#include "drivers/sqlite/column_declaration.h"

namespace orlune::sqlite {

std::string SqliteSql::Declare(const dialect::ColumnDefinition& definition,
                               const dialect::StoredValue& defaultValue) const {
  const dialect::ColumnType type = definition.Defined.Type;
  const bool isNull = std::holds_alternative<std::monostate>(defaultValue);
  if (isNull && type != dialect::ColumnType::kYesNo) return DeclareColumn(definition);
  return DeclareColumn(definition) + " DEFAULT " +
         Fixed(isNull ? std::int64_t{0} : defaultValue, type, dialect::LiteralUse::kStored);
}

std::string SqliteSql::Parameter(std::size_t /*position*/) const {
  return "?";
}

std::string SqliteSql::Fixed(const dialect::StoredValue& value, dialect::ColumnType /*type*/,
                             dialect::LiteralUse /*use*/) const {
  if (const auto* number = std::get_if<std::int64_t>(&value)) return std::to_string(*number);
  if (const auto* text = std::get_if<std::string_view>(&value)) return dialect::TextLiteral(*text);
  return "NULL";
}

std::string SqliteSql::Comparable(std::string_view column, dialect::ColumnType /*type*/) const {
  return std::string(column);
}

std::string SqliteSql::Like(std::string_view pattern) const {
  return std::string(" LIKE ").append(pattern);
}

std::string SqliteSql::SortKey(std::string_view comparable, dialect::ColumnType /*type*/,
                               bool isDescending) const {
  return std::string(comparable).append(isDescending ? " DESC" : "");
}

std::string SqliteSql::OfFirstInGroup(std::string_view column, std::string_view /*counter*/) const {
  return std::string(column);
}

/// What an index covers stands among its keys.
std::string SqliteSql::IndexColumns(const std::vector<std::string>& keys,
                                    const std::vector<std::string>& covered) const {
  std::vector<std::string> columns = keys;
  for (const std::string& column : covered) {
    if (std::find(keys.begin(), keys.end(), column) == keys.end()) columns.push_back(column);
  }
  return " (" + dialect::Listed(columns) + ")";
}

std::string SqliteSql::InsertWithCounter(std::string insert, const dialect::Table& /*table*/) const {
  return insert;
}

}  // namespace orlune::sqlite
