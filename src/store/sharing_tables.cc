#include "store/sharing_tables.h"

#include <array>

#include "store/rows.h"
#include "store/transaction.h"

namespace orlune {
namespace {

const std::array<Statement, 9>& Creations() {
  static const std::array<Statement, 9> kCreations{
      Statement("CREATE TABLE EventDays (DayID COUNTER CONSTRAINT DayID PRIMARY KEY, EventID LONG, "
                "EventDay DATETIME, Role TEXT (10))"),
      Statement("CREATE TABLE CalendarObjects (ObjectID COUNTER CONSTRAINT ObjectID PRIMARY KEY, "
                "ResourceName TEXT (255), UID TEXT (255), ObjectText MEMO, RowsDigest TEXT (64), "
                "ListedUntil DATETIME)"),
      Statement("CREATE TABLE ObjectEvents (ObjectEventID COUNTER CONSTRAINT ObjectEventID PRIMARY KEY, "
                "ObjectID LONG, EventID LONG, Place LONG)"),
      Statement("CREATE TABLE CalendarChanges (ChangeID COUNTER CONSTRAINT ChangeID PRIMARY KEY, "
                "Calendar TEXT (50), ResourceName TEXT (255), Moment LONG)"),
      Statement("CREATE TABLE CalendarLogs (LogID COUNTER CONSTRAINT LogID PRIMARY KEY, LogName TEXT (64), "
                "TrimmedTo LONG)"),
      Statement("CREATE TABLE ExchangeIdentity (IdentityID COUNTER CONSTRAINT IdentityID PRIMARY KEY, "
                "DatabaseName TEXT (64))"),
      Statement("CREATE TABLE AppPasswords (PasswordID COUNTER CONSTRAINT PasswordID PRIMARY KEY, "
                "Login TEXT (50), Label TEXT (100), Digest TEXT (64), Created DATETIME, LastUsed DATETIME)"),
      Statement("CREATE TABLE SecretLinks (LinkID COUNTER CONSTRAINT LinkID PRIMARY KEY, Login TEXT (50), "
                "Calendar TEXT (60), Label TEXT (100), Digest TEXT (64), Created DATETIME, "
                "LastUsed DATETIME)"),
      Statement("CREATE TABLE DeviceSettings (SettingID COUNTER CONSTRAINT SettingID PRIMARY KEY, "
                "Login TEXT (50), Calendar TEXT (60), Colour TEXT (20), Position TEXT (20))"),
  };
  return kCreations;
}

std::string FirstText(ResultSet& rows, std::string_view column) {
  return rows.Next() ? TextIn(rows, column) : "";
}

}  // namespace

void CreateSharingTables(Connection& database) {
  for (const Statement& creation : Creations()) database.TryExecute(creation);
}

void CreateSharingTablesForPages(Connection& database) {
  if (database.TryExecute(Creations().front())) CreateSharingTables(database);
}

Query<std::string> DatabaseNameQuery() {
  return {Statement("SELECT TOP 1 DatabaseName FROM ExchangeIdentity ORDER BY IdentityID"),
          [](ResultSet& rows) { return FirstText(rows, "DatabaseName"); }};
}

Query<std::string> LogNameQuery() {
  return {Statement("SELECT TOP 1 LogName FROM CalendarLogs ORDER BY LogID"),
          [](ResultSet& rows) { return FirstText(rows, "LogName"); }};
}

void NameDatabase(Connection& database, const ExchangeNames& names) {
  Transaction transaction(database);
  const auto [name, log] = Ask(database, DatabaseNameQuery(), LogNameQuery());
  if (name.empty())
    database.Execute(Statement("INSERT INTO ExchangeIdentity (DatabaseName) VALUES ('{}')", names.Database));
  if (log.empty())
    database.Execute(Statement("INSERT INTO CalendarLogs (LogName, TrimmedTo) VALUES ('{}', 0)", names.Log));
  transaction.Commit();
}

}  // namespace orlune
