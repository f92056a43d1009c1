#include "store/schema_upgrade.h"

#include "store/database_access.h"
#include "support/calendar_fixture.h"

namespace orlune::testing {
namespace {

using Database = CalendarFixture;

TEST(SqlValue, QuotesEverythingButNumbersAndKeywordsAfterAStar) {
  struct Case {
    std::optional<std::string_view> Value;
    const char* Sql;
  };
  const std::vector<Case> cases{
      {std::nullopt, "Null"}, {"", "Null"},
      {"- - - -", "Null"},    {"*12", "12"},
      {"*-3", "-3"},          {"*yes", "yes"},
      {"*No", "No"},          {"O'Brien", "'O'Brien'"},
      {"12", "'12'"},         {"*important*", "'*important*'"},
      {"*", "'*'"},           {"*1; DROP", "'*1; DROP'"},
      {"*Now()", "'*Now()'"},
  };
  for (const Case& c : cases) EXPECT_EQ(SqlValue(c.Value).Text(), c.Sql);
}

TEST(BuildSql, WritesColumnsInTheirOrder) {
  const std::vector<ColumnValue> pairs{{"A", SqlValue("x")}, {"B", SqlValue("*2")}};
  EXPECT_EQ(BuildSql(SqlMode::kUpdate, "Calendars", pairs, Statement("WHERE Name = '{}'", "u")).Text(),
            "UPDATE Calendars SET A = 'x', B = 2 WHERE Name = 'u'");
  EXPECT_EQ(BuildSql(SqlMode::kInsert, "Calendars", pairs).Text(),
            "INSERT INTO Calendars (A, B) VALUES ('x', 2)");
}

TEST(Statement, RecordsThePositionsOfItsValues) {
  const Statement list("'{}', '{}'", "a", "b'");
  const Statement whole("x IN ({}) AND y = {}", list, 42);
  EXPECT_EQ(whole.Text(), "x IN ('a', 'b'') AND y = 42");
  const StatementText text = whole;
  std::string values;
  for (const ValueSpan& value : text.Values)
    values += "[" + std::string(text.Text.substr(value.Begin, value.Length)) + "]";
  EXPECT_EQ(values, "[a][b'][42]");
}

TEST_F(Database, MakesUnusedInternalNames) {
  const auto connection = driver_.Open(databasePath_);
  const auto make = [&](std::string_view text) {
    return MakeInternalName(*connection, text, "Name", "Calendars");
  };
  const auto take = [&](std::string_view name) {
    connection->Execute(Statement("INSERT INTO Calendars (Name) VALUES ('{}')", name));
  };
  EXPECT_EQ(make("Sales Team!"), "salesteam");
  for (const char* expected : {"salesteam", "salesteam1", "salesteam2"}) {
    EXPECT_EQ(make("Sales Team!"), expected);
    take(expected);
  }
  take("ROOM0");
  EXPECT_EQ(make("Room 0"), "room1");
  EXPECT_EQ(make("2004"), "2004a");
  EXPECT_EQ(make("***"), "name");
  EXPECT_EQ(make("Åsa"), "sa");
}

class OldDatabase : public CalendarFixture {
 protected:
  /// Replaces the database by one with the oldest schema, before any request.
  OldDatabase() {
    databasePath_ = old_.Path();
    old_.CreateTables();
    Run(Statement("INSERT INTO Calendars (Name, MondayFirst) VALUES ('admin', no)"));
    Run(Statement("INSERT INTO Calendars (Name, MondayFirst) VALUES ('anna', yes)"));
    Run(Statement("INSERT INTO Calendars (Name, MondayFirst) VALUES ('ben', no)"));
    Run(Statement("INSERT INTO Calendars (Name, IsGroup) VALUES ('sales', yes)"));
  }

  DatabasePlace old_;
};

TEST_F(OldDatabase, IsUpgradedByTheFirstRequest) {
  Get("");
  EXPECT_EQ(Read(Statement("SELECT FirstDayOfWeek FROM Calendars WHERE Name = 'anna'")), "2");
  EXPECT_EQ(Read(Statement("SELECT FirstDayOfWeek FROM Calendars WHERE Name = 'ben'")), "1");
  EXPECT_EQ(Read(Statement("SELECT ClockMode FROM Calendars WHERE Name = 'ben'")), "24");
  EXPECT_EQ(Read(Statement("SELECT Weekend FROM Calendars WHERE Name = 'ben'")), "1, 7");
  EXPECT_EQ(Read(Statement("SELECT IsHidden FROM Calendars WHERE Name = 'admin'")), "yes");
  EXPECT_EQ(Read(Statement("SELECT IsHidden FROM Calendars WHERE Name = 'sales'")), "yes");
  EXPECT_EQ(Read(Statement("SELECT IsHidden FROM Calendars WHERE Name = 'anna'")), "no");
  EXPECT_THROW(Read(Statement("SELECT MondayFirst FROM Calendars")), DatabaseError);
  EXPECT_EQ(Read(Statement("SELECT EventType FROM Events")), "(none)");
}

TEST_F(OldDatabase, IsUpgradedOnce) {
  Get("");
  Run(Statement("UPDATE Calendars SET FirstDayOfWeek = 7, ClockMode = 12, Weekend = '6, 7', IsHidden = yes"));
  Get("");
  EXPECT_EQ(
      Read(Statement("SELECT Name FROM Calendars WHERE FirstDayOfWeek <> 7 OR ClockMode <> 12 OR Weekend <> "
                     "'6, 7' OR IsHidden = no")),
      "(none)");
}

}  // namespace
}  // namespace orlune::testing
