#include "drivers/sqlite/column_declaration.h"

#include <array>
#include <utility>

#include <fmt/format.h>

#include "drivers/dialect/engine_sql.h"
#include "platform/database.h"

namespace orlune::sqlite {

using dialect::ColumnType;

namespace {

/// The first word is our type. "TEXT" after it keeps SQLite from storing a numeric memo or date as a number.
constexpr std::array<std::pair<ColumnType, std::string_view>, 8> kDeclarations{{
    {ColumnType::kCounter, "INTEGER PRIMARY KEY AUTOINCREMENT"},
    {ColumnType::kLong, "LONG"},
    {ColumnType::kYesNo, "YESNO NOT NULL"},
    {ColumnType::kText, "TEXT"},
    {ColumnType::kMemo, "MEMO TEXT COLLATE NOCASE"},
    {ColumnType::kDate, "DATE TEXT"},
    {ColumnType::kTime, "TIME TEXT"},
    {ColumnType::kDateTime, "DATETIME TEXT"},
}};

std::string_view FirstWord(std::string_view text) {
  return text.substr(0, text.find_first_of(" ("));
}

}  // namespace

std::string DeclareColumn(const dialect::ColumnDefinition& definition) {
  const auto& [name, type] = definition.Defined;
  if (definition.IsPrimaryKey && type != ColumnType::kCounter) {
    throw DatabaseError(fmt::format("primary key {}: expected a counter", name));
  }
  std::string declaration = dialect::Quoted(name) + ' ';
  for (const auto& [declaredType, text] : kDeclarations) {
    if (declaredType == type) declaration += text;
  }
  if (type != ColumnType::kText) return declaration;
  if (definition.Length > 0) declaration += fmt::format("({})", definition.Length);
  return declaration += " COLLATE NOCASE";
}

dialect::ColumnType TypeOfDeclaration(std::string_view declared, bool isPrimaryKey) {
  const std::string_view word = FirstWord(declared);
  for (const auto& [type, text] : kDeclarations) {
    if (!dialect::SameName(word, FirstWord(text))) continue;
    return type == ColumnType::kCounter && !isPrimaryKey ? ColumnType::kLong : type;
  }
  return ColumnType::kText;
}

}  // namespace orlune::sqlite
