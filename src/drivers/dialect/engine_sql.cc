#include "drivers/dialect/engine_sql.h"

namespace orlune::dialect {

namespace {

std::string Enclosed(std::string_view text, char mark) {
  std::string enclosed(1, mark);
  for (const char c : text) enclosed.append(c == mark ? 2 : 1, c);
  return enclosed += mark;
}

}  // namespace

std::string Listed(const std::vector<std::string>& items) {
  std::string list;
  for (const std::string& item : items) list.append(list.empty() ? "" : ", ").append(item);
  return list;
}

std::string Quoted(std::string_view name) {
  return Enclosed(name, '"');
}

std::string TextLiteral(std::string_view text) {
  return Enclosed(text, '\'');
}

}  // namespace orlune::dialect
