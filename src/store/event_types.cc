#include "store/event_types.h"

#include <array>

#include "store/database_access.h"
#include "store/rows.h"

namespace orlune {

Query<std::vector<EventTypeEntry>> AllEventTypes() {
  return {
      Statement("SELECT TypeName, FileName FROM EventTypes"), [](ResultSet& rows) {
        const int typeName = rows.Column("TypeName");
        const int fileName = rows.Column("FileName");
        std::vector<EventTypeEntry> types;
        while (rows.Next()) {
          types.push_back({std::string(TextOf(rows.Get(typeName))), std::string(TextOf(rows.Get(fileName)))});
        }
        return types;
      }};
}

namespace {

Statement WithId(std::int64_t id) {
  return Statement("WHERE (TypeID = {})", id);
}

}  // namespace

Query<std::vector<RecordChoice>> EventTypeRecords() {
  return {Statement("SELECT TypeID AS ID, TypeName AS PrettyName, FileName AS IntName FROM EventTypes"),
          RecordChoicesIn};
}

Query<std::optional<NamedFile>> EventTypeWithId(std::int64_t id) {
  return {Statement("SELECT TypeName, FileName FROM EventTypes {}", WithId(id)), [](ResultSet& rows) {
            return FirstRow(rows, [](const ResultSet& row) {
              return NamedFile{TextIn(row, "TypeName"), TextIn(row, "FileName")};
            });
          }};
}

void SaveEventType(Connection& database, std::optional<std::int64_t> id, const NamedFile& type) {
  const std::array<ColumnValue, 2> columns{
      {{"TypeName", SqlText(type.Name)}, {"FileName", SqlText(type.File)}}};
  database.Execute(SaveRow("EventTypes", columns, id ? WithId(*id) : Statement()));
}

void DeleteEventType(Connection& database, std::int64_t id) {
  database.Execute(Statement("DELETE FROM EventTypes {}", WithId(id)));
}

}  // namespace orlune
