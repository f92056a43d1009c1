#include <functional>
#include <set>

#include "drivers/database_fixture.h"
#include "store/sharing_tables.h"

namespace orlune {
namespace {

class ChangeLog : public testing::DatabaseFixture {
 protected:
  ChangeLog() {
    const auto connection = Open();
    connection->Execute(Statement("ALTER TABLE Events ADD COLUMN EventType TEXT (50)"));
    CreateSharingTables(*connection);
  }

  void Write(const Statement& statement) { Open()->Execute(statement); }

  /// "calendar/resource" of the changes since the last call, each once.
  std::set<std::string> Changes() {
    const auto connection = Open();
    const auto rows = connection->Query(
        Statement("SELECT Calendar, ResourceName, Moment FROM CalendarChanges WHERE Moment > {}", seen_));
    std::set<std::string> changes;
    while (rows->Next()) {
      changes.insert(Text(rows->Get(0)) + "/" + Text(rows->Get(1)));
      seen_ = std::max(seen_, std::get<std::int64_t>(rows->Get(2)));
    }
    return changes;
  }

  std::size_t Rows(const StatementText& query) { return Column(*Open(), query, "EventID").size(); }

  std::int64_t seen_ = 0;
};

TEST_F(ChangeLog, SaysWhichObjectOfWhichCalendarHasChanged) {
  struct Case {
    const char* Name;
    std::vector<Statement> Statements;
    std::set<std::string> Changes;
  };
  const std::vector<Case> cases{
      {"an event is made",
       {Statement("INSERT INTO Events (EventID, EventName, Owner) VALUES (7, 'A', 'ann')")},
       {"ann//7"}},
      {"the same values are stored again", {Statement("UPDATE Events SET EventName = 'A'")}, {}},
      {"only the case changes", {Statement("UPDATE Events SET EventName = 'a'")}, {"ann//7"}},
      {"it is moved", {Statement("UPDATE Events SET Owner = 'bob'")}, {"ann//7", "bob//7"}},
      {"days are left out",
       {Statement("INSERT INTO EventDays (EventID, Role) VALUES (7, 'left out')"),
        Statement("INSERT INTO EventDays (EventID, Role) VALUES (7, 'left out')")},
       {"bob//7"}},
      {"it becomes part of an object",
       {Statement("INSERT INTO CalendarObjects (ObjectID, ResourceName) VALUES (3, 'x.ICS')"),
        Statement("INSERT INTO ObjectEvents (ObjectID, EventID) VALUES (3, 7)")},
       {"bob/x.ICS"}},
      {"the object gets another event",
       {Statement("INSERT INTO Events (EventID, Owner) VALUES (8, 'bob')"),
        Statement("INSERT INTO ObjectEvents (ObjectID, EventID) VALUES (3, 8)")},
       {"bob//8", "bob/x.ICS"}},
      {"the object's text", {Statement("UPDATE CalendarObjects SET ObjectText = 'BEGIN'")}, {"bob/x.ICS"}},
      {"how far its days are listed", {Statement("UPDATE CalendarObjects SET ListedUntil = Null")}, {}},
      {"one of its events is deleted", {Statement("DELETE FROM Events WHERE EventID = 7")}, {"bob/x.ICS"}},
      {"the last one is deleted", {Statement("DELETE FROM Events WHERE EventID = 8")}, {"bob/x.ICS"}},
      {"rows of events that are gone",
       {Statement("INSERT INTO EventDays (EventID, Role) VALUES (7, 'listed')"),
        Statement("DELETE FROM EventDays")},
       {}},
      {"another table", {Statement("INSERT INTO Calendars (Name) VALUES ('ann')")}, {}},
  };
  for (const Case& tested : cases) {
    for (const Statement& statement : tested.Statements) Write(statement);
    EXPECT_EQ(Changes(), tested.Changes) << tested.Name;
    if (std::string_view(tested.Name) == "one of its events is deleted") {
      EXPECT_EQ(Rows(Statement("SELECT EventID FROM EventDays")), 0U);
      EXPECT_EQ(Rows(Statement("SELECT EventID FROM ObjectEvents")), 1U);
    }
  }
  EXPECT_EQ(Column(*Open(), Statement("SELECT ResourceName FROM CalendarObjects"), "ResourceName"), Texts{});
}

TEST_F(ChangeLog, IsKeptForOtherProgramsAndComesBackWhenItWasRemoved) {
  place_.RunNative("INSERT INTO \"Events\" (\"Owner\", \"Private\") VALUES ('ann', 'f')");
  EXPECT_EQ(Changes().size(), 1U);
  const bool isFile = place_.Kind() == testing::Engine::kSqlite;
  place_.RunNative(isFile ? "DROP TRIGGER OrluneEventsUPDATE"
                          : "DROP TRIGGER \"OrluneEventsUPDATE\" ON \"Events\"");
  const auto fresh = place_.MakeDriver(regional_)->Open(place_.Path());
  fresh->Query(Statement("SELECT EventID FROM Events"));
  Write(Statement("UPDATE Events SET EventName = 'B'"));
  EXPECT_EQ(Changes().size(), 1U);
}

TEST_F(ChangeLog, NumbersChangesOnAfterItWasTrimmed) {
  Write(Statement("INSERT INTO Events (Owner) VALUES ('ann')"));
  EXPECT_EQ(Changes().size(), 1U);
  Write(Statement("INSERT INTO CalendarLogs (TrimmedTo) VALUES ({})", seen_));
  Write(Statement("DELETE FROM CalendarChanges"));
  Write(Statement("DELETE FROM Events"));
  EXPECT_EQ(Changes().size(), 1U);
}

TEST_F(ChangeLog, LeavesNothingBehindOfUsersAndGroups) {
  for (const char* name : {"ann", "bob", "team"})
    Write(Statement("INSERT INTO Calendars (Name) VALUES ('{}')", name));
  for (const char* login : {"ANN", "bob"}) {
    Write(Statement("INSERT INTO AppPasswords (Login) VALUES ('{}')", login));
    for (const char* calendar : {"ann", "team", "@view"}) {
      Write(Statement("INSERT INTO SecretLinks (Login, Calendar) VALUES ('{}', '{}')", login, calendar));
      Write(Statement("INSERT INTO DeviceSettings (Login, Calendar) VALUES ('{}', '{}')", login, calendar));
    }
  }
  const auto texts = [&](const StatementText& query, std::string_view column) {
    return Column(*Open(), query, column);
  };
  Write(Statement("UPDATE Calendars SET FriendlyName = 'A', Name = 'eve' WHERE Name = 'ann'"));
  Write(Statement("DELETE FROM Calendars WHERE Name = 'TEAM'"));
  EXPECT_EQ(texts(Statement("SELECT Login FROM AppPasswords"), "Login"), (Texts{"eve", "bob"}));
  EXPECT_EQ(texts(Statement("SELECT Login FROM SecretLinks"), "Login"), (Texts{"eve", "eve", "bob", "bob"}));
  EXPECT_EQ(texts(Statement("SELECT Calendar FROM DeviceSettings"), "Calendar"),
            (Texts{"eve", "@view", "eve", "@view"}));
  Write(Statement("DELETE FROM Calendars WHERE Name = 'eve'"));
  EXPECT_EQ(texts(Statement("SELECT Login FROM AppPasswords"), "Login"), Texts{"bob"});
  EXPECT_EQ(texts(Statement("SELECT Calendar FROM SecretLinks"), "Calendar"), Texts{"@view"});
}

/// A change that is not committed yet may get a lower number than one that is.
TEST_F(ChangeLog, HorizonStaysBelowWhatMayStillAppear) {
  if (place_.Kind() == testing::Engine::kSqlite) GTEST_SKIP() << "has one writer at a time";
  const auto slow = Open();
  slow->Begin();
  slow->TryExecute(Statement("INSERT INTO Events (Owner) VALUES ('ann')"));
  place_.RunNative("INSERT INTO \"Events\" (\"Owner\") VALUES ('bob')");
  const auto reader = Open();
  const auto newest = [](Connection& connection) {
    const auto rows = connection.Query(Statement("SELECT Moment FROM CalendarChanges ORDER BY Moment DESC"));
    return rows->Next() ? std::get<std::int64_t>(rows->Get(0)) : 0;
  };
  EXPECT_LE(reader->ChangeHorizon(), newest(*reader));
  slow->Commit();
  // Transactions of other databases of the server count as well, such as those of other tests.
  const auto isPassed = [&] {
    const auto later = Open();
    return later->ChangeHorizon() > newest(*later);
  };
  int tries = 0;
  while (!isPassed() && tries < 10'000) ++tries;
  EXPECT_LT(tries, 10'000);
}

}  // namespace
}  // namespace orlune
