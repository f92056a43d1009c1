#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/record_choice.h"
#include "store/field.h"

namespace orlune {

/// The text in the column `column` of the current row; "" for Null.
inline std::string TextIn(const ResultSet& row, std::string_view column) {
  return std::string(TextOf(row.Get(row.Column(column))));
}

/// The same, but nothing for Null.
inline std::optional<std::string> OptionalTextIn(const ResultSet& row, std::string_view column) {
  const Value value = row.Get(row.Column(column));
  return IsNull(value) ? std::nullopt : std::optional<std::string>(TextOf(value));
}

/// The texts in the column `column` of all rows.
inline std::vector<std::string> TextsIn(ResultSet& rows, std::string_view column) {
  const int position = rows.Column(column);
  std::vector<std::string> texts;
  while (rows.Next()) texts.emplace_back(TextOf(rows.Get(position)));
  return texts;
}

/// `read(row)` of the first row; nothing when there are no rows.
template <class Read>
auto FirstRow(ResultSet& rows, Read read) -> std::optional<decltype(read(rows))> {
  if (!rows.Next()) return std::nullopt;
  return read(rows);
}

/// The rows of a query that selects ID, PrettyName and IntName.
inline std::vector<RecordChoice> RecordChoicesIn(ResultSet& rows) {
  const int id = rows.Column("ID");
  const int prettyName = rows.Column("PrettyName");
  const int intName = rows.Column("IntName");
  std::vector<RecordChoice> choices;
  while (rows.Next()) {
    const Value key = rows.Get(id);
    const auto number = NumberOf(key);
    choices.push_back({number ? std::to_string(*number) : std::string(TextOf(key)),
                       std::string(TextOf(rows.Get(prettyName))), std::string(TextOf(rows.Get(intName)))});
  }
  return choices;
}

}  // namespace orlune
