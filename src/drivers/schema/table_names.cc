#include "drivers/schema/table_names.h"

#include "drivers/dialect/engine_sql.h"
#include "platform/database.h"

namespace orlune::schema {

std::string ColumnList(const dialect::Table& table) {
  std::string list;
  for (const dialect::Column& column : table.Columns) {
    if (!list.empty()) list += ", ";
    list += dialect::Quoted(column.Name);
  }
  return list;
}

const std::string& CounterName(const dialect::Table& table) {
  const dialect::Column* counter = table.Counter();
  if (counter == nullptr) throw DatabaseError("table " + table.Name + " has no counter");
  return counter->Name;
}

}  // namespace orlune::schema
