#include "drivers/sqlite/catalogue_reader.h"

#include <sqlite3.h>

#include "drivers/sqlite/column_declaration.h"
#include "drivers/sqlite/handles.h"

namespace orlune::sqlite {

dialect::Catalogue ReadCatalogue(sqlite3* database) {
  dialect::Catalogue catalogue;
  const auto row =
      Prepare(database,
              "SELECT t.name, c.name, c.type, c.pk FROM sqlite_schema t, pragma_table_info(t.name) c "
              "WHERE t.type = 'table' AND substr(t.name, 1, 7) <> 'sqlite_' ORDER BY t.rowid, c.cid");
  while (Step(row.get())) {
    const std::string_view table = ColumnText(row.get(), 0);
    if (catalogue.Tables.empty() || catalogue.Tables.back().Name != table) {
      catalogue.Tables.push_back({std::string(table), {}});
    }
    const bool isPrimaryKey = sqlite3_column_int(row.get(), 3) != 0;
    catalogue.Tables.back().Columns.push_back(
        {std::string(ColumnText(row.get(), 1)), TypeOfDeclaration(ColumnText(row.get(), 2), isPrimaryKey)});
  }
  return catalogue;
}

}  // namespace orlune::sqlite
