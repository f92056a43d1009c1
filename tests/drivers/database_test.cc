#include <array>
#include <atomic>
#include <thread>

#include "drivers/database_fixture.h"
#include "drivers/engines/database_engines.h"
#include "drivers/spliced.h"

namespace orlune {
namespace {

template <class Action>
void InFourThreads(Action action) {
  std::array<std::jthread, 4> threads;
  for (std::jthread& thread : threads) thread = std::jthread(action);
}

using Database = testing::DatabaseFixture;

TEST_F(Database, NeverReusesACounter) {
  const auto connection = Open();
  AddCalendar(*connection, "ann");
  connection->Execute(Statement("DELETE FROM Calendars"));
  AddCalendar(*connection, "bob");
  EXPECT_EQ(Column(*connection, Statement("SELECT CalendarID FROM Calendars"), "CalendarID"), Texts{"2"});
}

TEST_F(Database, AnswersUpgradeStatementsFromItsCatalogue) {
  const auto connection = Open();
  const auto old = Open();
  EXPECT_FALSE(old->TryExecute(Statement("ALTER TABLE Calendars ADD COLUMN name TEXT (50)")));
  EXPECT_FALSE(old->TryExecute(Statement("CREATE TABLE events (A LONG)")));
  EXPECT_FALSE(old->TryExecute(Statement("ALTER TABLE Calendars DROP COLUMN Nothing")));
  EXPECT_FALSE(old->TryExecute(Statement("ALTER TABLE Nothing ADD COLUMN A LONG")));
  EXPECT_THROW(old->Execute(Statement("ALTER TABLE Calendars ADD COLUMN Name TEXT (50)")), DatabaseError);

  AddCalendar(*connection, "ann");
  EXPECT_TRUE(connection->TryExecute(Statement("ALTER TABLE Calendars ADD COLUMN IsHidden YESNO")));
  EXPECT_FALSE(connection->TryExecute(Statement("ALTER TABLE Calendars ADD COLUMN IsHidden YESNO")));
  EXPECT_TRUE(connection->TryExecute(Statement("ALTER TABLE Calendars DROP COLUMN MondayFirst")));
  EXPECT_THROW(connection->Query(Statement("SELECT MondayFirst FROM Calendars")), DatabaseError);

  EXPECT_FALSE(old->TryExecute(Statement("ALTER TABLE Calendars ADD COLUMN IsHidden YESNO")));
  const auto rows = old->Query(Statement("SELECT IsHidden FROM Calendars"));
  ASSERT_TRUE(rows->Next());
  EXPECT_EQ(rows->Get(0), Value(false));
}

TEST_F(Database, RunsOneOfSeveralConcurrentUpgrades) {
  std::atomic<int> successes = 0;
  const auto patient = place_.MakeDriver(regional_);
  InFourThreads([&] {
    const auto connection = patient->Open(place_.Path());
    successes += connection->TryExecute(Statement("ALTER TABLE Calendars ADD COLUMN Weekend TEXT (50)"));
    connection->Execute(Statement("UPDATE Calendars SET Weekend = '1, 7'"));
  });
  EXPECT_EQ(successes, 1);
}

TEST_F(Database, ShowsAConnectionOneStateUntilItWrites) {
  const auto reader = Open();
  EXPECT_EQ(Names(*reader), Texts{});
  AddCalendar(*Open(), "ann");
  EXPECT_EQ(Names(*reader), Texts{});
  AddCalendar(*reader, "bob");
  EXPECT_EQ(Names(*reader), (Texts{"ann", "bob"}));
}

TEST_F(Database, ReadsAQueryToItsEndWhileItsRowsAreWritten) {
  const auto connection = Open();
  for (const char* name : {"a", "b", "c"}) AddCalendar(*connection, name);
  const auto rows = connection->Query(Statement("SELECT Name FROM Calendars WHERE Name > ''"));
  Texts seen;
  while (rows->Next()) {
    const Value name = rows->Get(0);
    AddCalendar(*Open(), "somebody");
    connection->Execute(
        Statement("UPDATE Calendars SET Name = 'z{}' WHERE Name = '{}'", Text(name), Text(name)));
    seen.push_back(Text(name));
    EXPECT_EQ(Names(*connection)[seen.size() - 1], "z" + seen.back());
  }
  EXPECT_EQ(seen, (Texts{"a", "b", "c"}));
}

TEST_F(Database, RunsNestedQueries) {
  const auto connection = Open();
  for (const char* name : {"a", "b"}) AddCalendar(*connection, name);
  const Statement query("SELECT Name FROM Calendars WHERE Name <> '{}'", "c");
  Texts seen;
  const auto outer = connection->Query(query);
  while (outer->Next()) {
    const auto inner = connection->Query(query);
    while (inner->Next()) seen.push_back(Text(outer->Get(0)) + Text(inner->Get(0)));
  }
  EXPECT_EQ(seen, (Texts{"aa", "ab", "ba", "bb"}));
}

TEST_F(Database, KeepsATransactionTogether) {
  const auto connection = Open();
  AddCalendar(*connection, "a");
  const auto before = connection->Query(Statement("SELECT Name FROM Calendars"));
  ASSERT_TRUE(before->Next());
  connection->Begin();
  EXPECT_THROW(connection->Begin(), DatabaseError);
  AddCalendar(*connection, "b");
  const auto inside = connection->Query(Statement("SELECT Name FROM Calendars"));
  connection->Execute(Statement("DELETE FROM Calendars"));
  EXPECT_EQ(Column(*inside, "Name"), (Texts{"a", "b"}));
  EXPECT_EQ(Names(*Open()), Texts{"a"});
  EXPECT_EQ(Text(before->Get(0)), "a");
  connection->Rollback();
  EXPECT_EQ(Names(*connection), Texts{"a"});

  connection->Begin();
  EXPECT_FALSE(connection->TryExecute(Statement("INSERT INTO Calendars (CalendarID) VALUES (1)")));
  EXPECT_TRUE(connection->TryExecute(Statement("ALTER TABLE Calendars ADD COLUMN Weekend TEXT (50)")));
  EXPECT_FALSE(connection->TryExecute(Statement("ALTER TABLE Calendars ADD COLUMN Weekend TEXT (50)")));
  connection->Execute(Statement("UPDATE Calendars SET Weekend = '1, 7'"));
  connection->Commit();
  EXPECT_THROW(connection->Commit(), DatabaseError);
  EXPECT_EQ(Column(*Open(), Statement("SELECT Weekend FROM Calendars"), "Weekend"), Texts{"1, 7"});
}

TEST_F(Database, KeepsWhatWasExecutedBeforeAFailingStatement) {
  const auto connection = Open();
  const testing::Spliced calendar("INSERT INTO Calendars (CalendarID, Name) VALUES ({}, '{}')", {"7", "ann"});
  const testing::Spliced other("INSERT INTO Calendars (CalendarID, Name) VALUES ({}, '{}')", {"8", "bob"});
  const testing::Spliced late("INSERT INTO Calendars (CalendarID, Name) VALUES ({}, '{}')", {"9", "cleo"});
  const testing::Spliced noNumber("INSERT INTO Calendars (DayBegin) VALUES ('{}')", {"early"});
  for (const StatementText failing : {StatementText(calendar), StatementText(noNumber)}) {
    connection->Execute(Statement("DELETE FROM Calendars"));
    EXPECT_THROW(connection->ExecuteInOrder(std::vector<StatementText>{calendar, other, failing, late}),
                 DatabaseError);
    EXPECT_EQ(Names(*Open()), (Texts{"ann", "bob"}));
  }
  connection->ExecuteInOrder(std::vector<StatementText>{late});
  EXPECT_EQ(Names(*Open()), (Texts{"ann", "bob", "cleo"}));
}

TEST_F(Database, RollsBackWhatAConnectionDidNotCommit) {
  {
    const auto connection = Open();
    connection->Begin();
    AddCalendar(*connection, "ann");
  }
  EXPECT_EQ(Names(*Open()), Texts{});
  AddCalendar(*Open(), "bob");
  EXPECT_EQ(Names(*Open()), Texts{"bob"});
}

TEST_F(Database, FailsAWriteAtItsLockTimeoutAndRecovers) {
  const auto writer = Open();
  const auto other = Open();
  writer->Begin();
  AddCalendar(*writer, "ann");
  EXPECT_EQ(Names(*writer), Texts{"ann"});
  EXPECT_THROW(AddCalendar(*other, "bob"), DatabaseError);
  EXPECT_THROW(other->TryExecute(Statement("DELETE FROM Calendars")), DatabaseUnavailable);
  const auto becomeWriter = [&] {
    other->Begin();
    other->Commit();
  };
  EXPECT_THROW(becomeWriter(), DatabaseError);
  writer->Commit();
  AddCalendar(*other, "bob");
  EXPECT_EQ(Names(*other), (Texts{"ann", "bob"}));
}

TEST_F(Database, KeepsTheTransactionsOfSeveralThreadsApart) {
  const auto patient = place_.MakeDriver(regional_);
  std::atomic<int> thread = 0;
  InFourThreads([&] {
    const std::string name = "user" + std::to_string(++thread);
    for (std::size_t i = 0; i < 10; ++i) {
      const auto connection = patient->Open(place_.Path());
      Names(*connection);
      AddCalendar(*connection, name);
      connection->Begin();
      AddCalendar(*connection, "lost");
      EXPECT_FALSE(connection->TryExecute(Statement("INSERT INTO Calendars (CalendarID) VALUES (1)")));
      connection->Rollback();
      connection->Begin();
      AddCalendar(*connection, name);
      connection->Commit();
      const Statement own("SELECT Name FROM Calendars WHERE Name = '{}'", name);
      EXPECT_EQ(Column(*patient->Open(place_.Path()), own, "Name").size(), 2 * i + 2);
    }
  });
  EXPECT_EQ(Names(*Open()).size(), 80U);
}

TEST_F(Database, RefusesToWriteWhenItIsOpenForReading) {
  AddCalendar(*Open(), "ann");
  DatabaseEngines engines(regional_);
  const NamedDatabase database = engines.Named(DatabaseAddress::Parse(place_.Path()));
  const auto connection = database.Engine.Connect(database.Address, Access::kRead);
  EXPECT_EQ(Names(*connection), Texts{"ann"});
  EXPECT_FALSE(connection->TryExecute(Statement("ALTER TABLE Calendars ADD COLUMN Name TEXT (50)")));
  EXPECT_THROW(connection->TryExecute(Statement("DELETE FROM Calendars")), WriteRefused);
  EXPECT_THROW(connection->Begin(), WriteRefused);
  EXPECT_EQ(Names(*connection), Texts{"ann"});
}

TEST_F(Database, OutlivesItsConnectionInAnOpenQuery) {
  AddCalendar(*Open(), "ann");
  auto connection = Open();
  const auto rows = connection->Query(Statement("SELECT Name FROM Calendars"));
  connection.reset();
  EXPECT_EQ(Column(*rows, "Name"), Texts{"ann"});
}

TEST_F(Database, RunsMoreStatementsThanItCaches) {
  const auto connection = Open();
  AddCalendar(*connection, "ann");
  for (int i = 0; i < 600; ++i) {
    const std::string alias = 'A' + std::to_string(i % 300);
    const testing::Spliced query("SELECT Name AS " + alias + " FROM Calendars WHERE Name = '{}'", {"ann"});
    EXPECT_EQ(Column(*connection, query, alias), Texts{"ann"});
  }
}

}  // namespace
}  // namespace orlune
