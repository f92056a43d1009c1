#include <algorithm>

#include "drivers/database_fixture.h"
#include "drivers/dialect/parser.h"
#include "drivers/dialect/translation.h"
#include "drivers/postgresql/link.h"
#include "drivers/postgresql/postgresql_sql.h"
#include "drivers/postgresql/schema_reader.h"
#include "drivers/spliced.h"
#include "drivers/sqlite/catalogue_reader.h"
#include "drivers/sqlite/handles.h"
#include "drivers/sqlite/sqlite_sql.h"
#include "store/sharing_tables.h"

namespace orlune {
namespace {

using testing::Engine;
using testing::Spliced;

class QueryPlans : public testing::DatabaseFixture {
 protected:
  QueryPlans() {
    const auto connection = Open();
    connection->Execute(Statement(
        "CREATE TABLE GroupViews (GroupID COUNTER CONSTRAINT GroupID PRIMARY KEY, FriendlyName TEXT (50), "
        "Name TEXT (50), Owner TEXT (50))"));
    connection->Execute(Statement("ALTER TABLE Calendars ADD COLUMN IsHidden YESNO"));
    connection->Execute(Statement("ALTER TABLE Events ADD COLUMN EventType TEXT (50)"));
    CreateSharingTables(*connection);
    Open()->Query(Statement("SELECT Name FROM GroupViews"));  // creates the indexes
    if (place_.Kind() == Engine::kPostgresql) AddManyRows();
  }

  /// The plans of a server depend on the number of rows.
  void AddManyRows() const {
    for (const char* sql :
         {"INSERT INTO \"Events\" (\"Owner\", \"Type\", \"BeginDate\", \"EndDate\", \"SuggID\", "
          "\"SuggestState\") "
          "SELECT 'user' || i % 20, CASE WHEN i % 10 = 0 THEN 'day' ELSE 'none' END, date '2000-01-01' + i, "
          "date '2000-01-01' + i, i, CASE WHEN i % 2 = 0 THEN '-' END FROM generate_series(1, 20000) AS i",
          "INSERT INTO \"Calendars\" (\"Name\", \"FriendlyName\") SELECT 'user' || i, 'User ' || i FROM "
          "generate_series(1, 2000) AS i",
          "INSERT INTO \"EventDays\" (\"EventID\", \"EventDay\") SELECT i, timestamp '2000-01-01' + day * "
          "interval '1 day' FROM generate_series(1, 5000) AS i, generate_series(1, 10) AS day",
          "INSERT INTO \"Messages\" (\"Recipient\", \"SentDate\") SELECT 'user' || i % 100, timestamp "
          "'2000-01-01' FROM generate_series(1, 5000) AS i",
          "INSERT INTO \"GroupViews\" (\"Name\", \"Owner\") SELECT 'team' || i, 'user' || i FROM "
          "generate_series(1, 1000) AS i"}) {
      place_.RunNative(sql);
    }
    place_.RunNative("ANALYZE");
  }

  std::string Plan(const StatementText& query) const {
    return place_.Kind() == Engine::kSqlite ? SqlitePlan(query) : PostgresqlPlan(query);
  }
  /// One line for each step.
  std::string SqlitePlan(const StatementText& query) const {
    const auto raw = sqlite::OpenExisting(place_.Path(), {});
    const auto translation = dialect::Translate(dialect::Parse(query), sqlite::ReadCatalogue(raw.get()),
                                                sqlite::SqliteSql(), regional_);
    const auto step = sqlite::Prepare(raw.get(), "EXPLAIN QUERY PLAN " + translation.Sql);
    std::string plan = translation.Sql;
    while (sqlite::Step(step.get())) plan.append("\n").append(sqlite::ColumnText(step.get(), 3));
    return plan;
  }
  /// The generic plan, for any values.
  std::string PostgresqlPlan(const StatementText& query) const {
    postgresql::Link link(place_.Path(), {});
    const auto translation = dialect::Translate(dialect::Parse(query), postgresql::ReadSchema(link).Tables,
                                                postgresql::PostgresqlSql(), regional_);
    std::string values;
    for (std::size_t i = 0; i < translation.Parameters.size(); ++i) values += i == 0 ? "(NULL" : ", NULL";
    return place_.RunNative(
        "SET enable_seqscan = off; SET plan_cache_mode = force_generic_plan; PREPARE page AS " +
        translation.Sql + "; EXPLAIN (FORMAT JSON) EXECUTE page" + (values.empty() ? "" : values + ")"));
  }
};

TEST_F(QueryPlans, UseIndexesForEveryQueryOfThePages) {
  struct Case {
    std::string Query;
    Texts OnFiles;
    Texts OnServers;
  };
  const std::vector<Case> cases{
      {"SELECT * FROM Events WHERE (Owner In ('{}', '{}')) AND ((Type = 'none' AND BeginDate >= "
       "DateValue('{}') "
       "AND BeginDate <= DateValue('{}')) OR (Type <> 'none' AND BeginDate <= DateValue('{}') AND EndDate >= "
       "DateValue('{}'))) ORDER BY BeginTime",
       {"EventsOwnerBegin (Owner=? AND BeginDate>? AND BeginDate<?)",
        "EventsRepeating (Owner=? AND EndDate>?)"},
       {"EventsOwnerBegin", "EventsRepeating"}},
      {"SELECT EventDays.EventID, EventDays.EventDay, EventDays.Role FROM EventDays INNER JOIN Events ON "
       "EventDays.EventID = Events.EventID WHERE (Owner In ('{}', '{}')) AND Type <> 'none' AND BeginDate <= "
       "DateValue('{}') AND EndDate >= DateValue('{}') AND EventDay >= DateValue('{}') AND EventDay <= "
       "DateValue('{}') ORDER BY EventDay",
       {"EventsRepeating (Owner=? AND EndDate>?)",
        "EventDaysEvent (EventID=? AND EventDay>? AND EventDay<?)"},
       {"EventsRepeating", "EventDaysEvent"}},
      {"SELECT Password FROM Calendars WHERE (Name = '{}') AND (IsGroup = no)",
       {"CalendarsName (Name=?)"},
       {"CalendarsName"}},
      {"SELECT DISTINCT MemberOfGroups FROM Calendars WHERE Name IN ('{}', '{}')",
       {"CalendarsName (Name=?)"},
       {"CalendarsName"}},
      {"SELECT Count(MessageID) AS N FROM Messages WHERE Recipient = '{}' AND Viewed = No",
       {"COVERING INDEX MessagesUnread (Recipient=? AND Viewed=?)"},
       {"Messages"}},
      {"SELECT Sender FROM Messages WHERE Recipient = '{}' ORDER BY SentDate",
       {"MessagesSent (Recipient=?)"},
       {"Messages"}},
      {"SELECT SuggestState FROM Events INNER JOIN Calendars ON Owner = Calendars.Name WHERE (SuggID = '{}')",
       {"EventsSuggID (SuggID=?)", "CalendarsName (Name=?)"},
       {"EventsSuggID", "CalendarsName"}},
      {"SELECT TOP 1 EventID FROM Events WHERE SuggestState = '-' ORDER BY EventID DESC",
       {"EventsSuggestState (SuggestState=?)"},
       {"Backward", "EventsSuggestState"}},
      {"SELECT FriendlyName FROM GroupViews WHERE Name = '{}'",
       {"GroupViewsName (Name=?)"},
       {"GroupViewsName"}},
      {"SELECT Name FROM GroupViews WHERE (Owner = '{}' OR Owner = 'admin') ORDER BY FriendlyName",
       {"GroupViewsOwner (Owner=?)"},
       {"GroupViewsOwner"}},
      {"SELECT SheetFile FROM Calendars INNER JOIN StyleSheets ON Calendars.StyleSheet = StyleSheets.SheetID "
       "WHERE Name = '{}'",
       {"CalendarsName (Name=?)", "PRIMARY KEY (rowid=?)"},
       {"CalendarsName", "StyleSheets_pkey"}},
      {"SELECT Name, FriendlyName FROM Calendars WHERE (IsHidden = no OR Name = '{}') ORDER BY IsGroup, "
       "FriendlyName",
       {"COVERING INDEX CalendarsChoice"},
       {"CalendarsChoice"}},
  };
  for (const auto& [query, onFiles, onServers] : cases) {
    const auto values = static_cast<std::size_t>(std::count(query.begin(), query.end(), '{'));
    const std::string plan = Plan(Spliced(query, Texts(values, "1")));
    for (const char* scan : {"SCAN Events", "Seq Scan"})
      EXPECT_EQ(plan.find(scan), std::string::npos) << plan;
    for (const std::string& step : place_.Kind() == Engine::kSqlite ? onFiles : onServers)
      EXPECT_NE(plan.find(step), std::string::npos) << plan;
  }
}

}  // namespace
}  // namespace orlune
