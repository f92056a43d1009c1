#include "drivers/schema/table_names.h"

#include "drivers/access_sql/engine_sql.h"
#include "platform/database.h"

namespace orlune::schema {

std::string ColumnList(const access_sql::Table& table) {
  std::string list;
  for (const access_sql::Column& column : table.Columns) {
    if (!list.empty()) list += ", ";
    list += access_sql::Quoted(column.Name);
  }
  return list;
}

const std::string& CounterName(const access_sql::Table& table) {
  const access_sql::Column* counter = table.Counter();
  if (counter == nullptr) throw DatabaseError("the table " + table.Name + " has no counter");
  return counter->Name;
}

}  // namespace orlune::schema
