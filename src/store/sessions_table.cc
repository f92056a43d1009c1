#include "store/sessions_table.h"

namespace orlune {

void CreateSessionsTable(Connection& database) {
  database.TryExecute(Statement(
      "CREATE TABLE Sessions (SessionKey TEXT (64), SessionValues MEMO, Version LONG, Expires LONG)"));
  database.TryExecute(Statement("ALTER TABLE Sessions ADD COLUMN Login TEXT (255)"));
}

Query<bool> IsEndedLogin(std::string_view loginId) {
  return {Statement("SELECT SessionKey FROM Sessions WHERE SessionKey = 'ended {}'", loginId),
          [](ResultSet& rows) { return rows.Next(); }};
}

void EndLogin(Connection& database, std::string_view loginId, std::int64_t expires, std::int64_t now) {
  CreateSessionsTable(database);
  database.Execute(Statement("DELETE FROM Sessions WHERE Expires <= {}", now));
  database.Execute(
      Statement("INSERT INTO Sessions (SessionKey, Expires) VALUES ('ended {}', {})", loginId, expires));
}

}  // namespace orlune
