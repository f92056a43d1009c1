#include "store/style_sheets.h"

#include <array>

#include "store/database_access.h"
#include "store/rows.h"

namespace orlune {
namespace {

Statement WithId(std::int64_t id) {
  return Statement("WHERE (SheetID = {})", id);
}

}  // namespace

Query<std::vector<StyleSheetChoice>> StyleSheetChoices() {
  return {Statement("SELECT SheetID, SheetName FROM StyleSheets"), [](ResultSet& rows) {
            const int id = rows.Column("SheetID");
            const int name = rows.Column("SheetName");
            std::vector<StyleSheetChoice> sheets;
            while (rows.Next())
              sheets.push_back({NumberOf(rows.Get(id)).value_or(0), std::string(TextOf(rows.Get(name)))});
            return sheets;
          }};
}

Query<std::vector<int>> StyleSheetIds() {
  return {Statement("SELECT SheetID FROM StyleSheets"), [](ResultSet& rows) {
            const int id = rows.Column("SheetID");
            std::vector<int> ids;
            while (rows.Next()) ids.push_back(NumberOf(rows.Get(id)).value_or(0));
            return ids;
          }};
}

Query<std::vector<RecordChoice>> StyleSheetRecords() {
  return {Statement("SELECT SheetID AS ID, SheetName AS PrettyName, SheetFile AS IntName FROM StyleSheets "
                    "ORDER BY SheetName"),
          RecordChoicesIn};
}

Query<std::optional<NamedFile>> StyleSheetWithId(std::int64_t id) {
  return {Statement("SELECT SheetName, SheetFile FROM StyleSheets {}", WithId(id)), [](ResultSet& rows) {
            return FirstRow(rows, [](const ResultSet& row) {
              return NamedFile{TextIn(row, "SheetName"), TextIn(row, "SheetFile")};
            });
          }};
}

void SaveStyleSheet(Connection& database, std::optional<std::int64_t> id, const NamedFile& sheet) {
  const std::array<ColumnValue, 2> columns{
      {{"SheetName", SqlText(sheet.Name)}, {"SheetFile", SqlText(sheet.File)}}};
  database.Execute(SaveRow("StyleSheets", columns, id ? WithId(*id) : Statement()));
}

void DeleteStyleSheet(Connection& database, std::int64_t id) {
  database.Execute(Statement("DELETE FROM StyleSheets {}", WithId(id)));
}

}  // namespace orlune
