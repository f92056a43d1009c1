#include "store/database_access.h"

#include <algorithm>
#include <array>

#include "base/text.h"

namespace orlune {
namespace {

bool IsNumber(std::string_view text) {
  return IsDigits(text.starts_with('-') ? text.substr(1) : text);
}

bool StandsUnquoted(std::string_view text) {
  constexpr std::array<std::string_view, 3> kWords{"yes", "no", "null"};
  const std::string lower = ToLower(text);
  return IsNumber(text) || std::find(kWords.begin(), kWords.end(), lower) != kWords.end();
}

}  // namespace

std::unique_ptr<ResultSet> OpenQuery(Connection& database, const Statement& sql) {
  return database.Query(sql);
}

void ExecuteQuiet(Connection& database, const Statement& sql, bool& failed) {
  failed = !database.TryExecute(sql);
}

Statement SqlValue(std::optional<std::string_view> value) {
  if (!value || value->empty() || *value == "- - - -") return Statement("Null");
  if (value->starts_with('*') && StandsUnquoted(value->substr(1))) return Statement("{}", value->substr(1));
  return Statement("'{}'", *value);
}

Statement SqlText(std::string_view text) {
  return text.empty() ? Statement("Null") : Statement("'{}'", text);
}

Statement BuildSql(SqlMode mode, SqlLiteral table, std::span<const ColumnValue> pairs,
                   const Statement& where) {
  Statement columns;
  Statement values;
  for (const ColumnValue& pair : pairs) {
    const SqlLiteral separator = columns.IsEmpty() ? SqlLiteral("") : SqlLiteral(", ");
    if (mode == SqlMode::kInsert) {
      columns.Add("{}{}", separator, pair.Column);
      values.Add("{}{}", separator, pair.Value);
    } else {
      columns.Add("{}{} = {}", separator, pair.Column, pair.Value);
    }
  }
  if (mode == SqlMode::kInsert) return Statement("INSERT INTO {} ({}) VALUES ({})", table, columns, values);
  return Statement("UPDATE {} SET {} {}", table, columns, where);
}

Statement QuotedList(std::span<const std::string> items) {
  Statement list;
  for (const std::string& item : items)
    list.Add("{}'{}'", list.IsEmpty() ? SqlLiteral("") : SqlLiteral(", "), item);
  return list;
}

Statement NameQuery(SqlLiteral column, SqlLiteral table, std::string_view name) {
  return Statement("SELECT {} FROM {} WHERE Name = '{}'", column, table, name);
}

bool NameExists(Connection& database, SqlLiteral column, SqlLiteral table, std::string_view name) {
  return OpenQuery(database, NameQuery(column, table, name))->Next();
}

std::string MakeInternalName(Connection& database, std::string_view text, SqlLiteral column,
                             SqlLiteral table) {
  std::string name = ToLower(text);
  std::erase_if(name, [](char c) { return !(c >= 'a' && c <= 'z') && !(c >= '0' && c <= '9'); });
  if (name.empty()) name = "name";
  if (IsDigits(name)) name += "a";

  for (int n = 1; NameExists(database, column, table, name); ++n) {
    const std::string previous = std::to_string(n - 1);
    if (name.ends_with(previous)) name.resize(name.size() - previous.size());
    name += std::to_string(n);
  }
  return name;
}

Statement SaveRow(SqlLiteral table, std::span<const ColumnValue> pairs, const Statement& where) {
  return BuildSql(where.IsEmpty() ? SqlMode::kInsert : SqlMode::kUpdate, table, pairs, where);
}

}  // namespace orlune
