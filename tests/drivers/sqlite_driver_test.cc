#include "drivers/sqlite/sqlite_driver.h"

#include <array>
#include <atomic>
#include <fstream>
#include <thread>

#include <unistd.h>

#include "drivers/spliced.h"
#include "drivers/sqlite_fixture.h"

namespace orlune {
namespace {

using Texts = std::vector<std::string>;

/// Takes the rights of the superuser away for a while, where the tests run with them.
class Unprivileged {
 public:
  Unprivileged() { EXPECT_TRUE(!isRoot_ || seteuid(65534) == 0); }
  ~Unprivileged() { EXPECT_TRUE(!isRoot_ || seteuid(0) == 0); }
  Unprivileged(const Unprivileged&) = delete;
  Unprivileged& operator=(const Unprivileged&) = delete;

 private:
  const bool isRoot_ = geteuid() == 0;
};

template <class Action>
void InFourThreads(Action action) {
  std::array<std::jthread, 4> threads;
  for (std::jthread& thread : threads) thread = std::jthread(action);
}

class SqliteFile : public testing::SqliteFixture {
 protected:
  Texts Names(Connection& connection) {
    return Column(connection, Statement("SELECT Name FROM Calendars"), "Name");
  }

  /// Why `path` cannot be opened; empty when it can.
  std::string Refusal(const std::string& path) {
    try {
      const auto opened = driver_.Open(path);
      return "";
    } catch (const DatabaseError& error) {
      return error.what();
    }
  }
};

TEST_F(SqliteFile, IsNotOpenedUnlessItIsOurs) {
  const auto path = [&](const char* name) { return (folder_.Path() / name).string(); };
  std::ofstream(path("text")) << std::string(5000, 'x');
  std::ofstream(path("empty")) << "";
  sqlite::Run(sqlite::CreateEmpty(path("foreign")).get(), "CREATE TABLE Songs (Title TEXT)");
  const std::vector<std::pair<const char*, const char*>> cases{
      {"missing", "No such file or directory"},
      {"text", "file is not a database"},
      {"empty", "not an Orlune database: table Calendars is missing"},
      {"foreign", "not an Orlune database: table Calendars is missing"},
      {"", "Is a directory"},
  };
  for (const auto& [name, expected] : cases) {
    EXPECT_NE(Refusal(path(name)).find(expected), std::string::npos) << name << ": " << Refusal(path(name));
  }
  EXPECT_FALSE(std::filesystem::exists(path("missing")));
  EXPECT_EQ(std::filesystem::file_size(path("empty")), 0U);
}

TEST_F(SqliteFile, IsNotOpenedWithoutPermission) {
  std::filesystem::permissions(folder_.Path(), std::filesystem::perms::all);
  std::filesystem::permissions(file_, std::filesystem::perms::none);
  const Unprivileged unprivileged;
  EXPECT_NE(Refusal(file_).find("ermission denied"), std::string::npos) << Refusal(file_);
}

TEST_F(SqliteFile, IsNotOpenedWhileSomebodyHasItAlone) {
  const auto raw = OpenRaw();
  sqlite::Run(raw.get(), "PRAGMA journal_mode = DELETE");
  sqlite::Run(raw.get(), "BEGIN EXCLUSIVE");
  EXPECT_NE(Refusal(file_).find("database is locked"), std::string::npos);
  sqlite::Run(raw.get(), "COMMIT");
  EXPECT_EQ(Refusal(file_), "");
}

TEST_F(SqliteFile, IsReadThoughItCannotBeWritten) {
  sqlite::Run(OpenRaw().get(), "PRAGMA journal_mode = DELETE");
  std::filesystem::permissions(folder_.Path(), std::filesystem::perms::all);
  std::filesystem::permissions(file_, std::filesystem::perms(0444));
  const Unprivileged unprivileged;
  const auto connection = Open();
  EXPECT_EQ(Names(*connection), Texts{});
  EXPECT_THROW(AddCalendar(*connection, "ann"), DatabaseError);
}

TEST_F(SqliteFile, IsOpenedAnewWhenAnotherTookItsName) {
  AddCalendar(*Open(), "old");
  CreateBaseDatabase(folder_.Path() / "other.db");
  AddCalendar(*driver_.Open(folder_.Path() / "other.db"), "new");
  sqlite::Run(sqlite::OpenExisting(folder_.Path() / "other.db", {}).get(), "PRAGMA wal_checkpoint(TRUNCATE)");
  std::filesystem::rename(folder_.Path() / "other.db", file_);
  EXPECT_EQ(Names(*Open()), Texts{"new"});
  std::filesystem::remove(file_);
  EXPECT_THROW(Open(), DatabaseError);
}

TEST_F(SqliteFile, IsNeverOverwrittenByANewOne) {
  AddCalendar(*Open(), "ann");
  EXPECT_THROW(CreateBaseDatabase(file_), DatabaseError);
  EXPECT_THROW(CreateBaseDatabase(folder_.Path() / "missing" / "calendar.db"), DatabaseError);
  EXPECT_EQ(Names(*Open()), Texts{"ann"});
  std::vector<std::string> unfinished;
  for (const auto& entry : std::filesystem::directory_iterator(folder_.Path())) {
    if (entry.path().filename().string().find("unfinished") != std::string::npos)
      unfinished.push_back(entry.path());
  }
  EXPECT_EQ(unfinished, Texts{});
}

TEST_F(SqliteFile, IsWrittenDurably) {
  const auto raw = sqlite::OpenExisting(file_, {});
  for (const auto& [pragma, expected] : std::vector<std::pair<const char*, const char*>>{
           {"PRAGMA journal_mode", "wal"}, {"PRAGMA synchronous", "2"}, {"PRAGMA integrity_check", "ok"}}) {
    const auto row = sqlite::Prepare(raw.get(), pragma);
    ASSERT_TRUE(sqlite::Step(row.get()));
    EXPECT_EQ(sqlite::ColumnText(row.get(), 0), expected) << pragma;
  }
}

TEST_F(SqliteFile, NeverReusesACounter) {
  const auto connection = Open();
  AddCalendar(*connection, "ann");
  connection->Execute(Statement("DELETE FROM Calendars"));
  AddCalendar(*connection, "bob");
  EXPECT_EQ(Column(*connection, Statement("SELECT CalendarID FROM Calendars"), "CalendarID"), Texts{"2"});
}

TEST_F(SqliteFile, AnswersUpgradeStatementsFromWhatItHas) {
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

TEST_F(SqliteFile, TakesOneOfSeveralUpgradesAtOnce) {
  std::atomic<int> successes = 0;
  SqliteDriver patient(regional_);
  InFourThreads([&] {
    const auto connection = patient.Open(file_);
    successes += connection->TryExecute(Statement("ALTER TABLE Calendars ADD COLUMN Weekend TEXT (50)"));
    connection->Execute(Statement("UPDATE Calendars SET Weekend = '1, 7'"));
  });
  EXPECT_EQ(successes, 1);
}

TEST_F(SqliteFile, ShowsAConnectionOneStateUntilItWrites) {
  const auto reader = Open();
  EXPECT_EQ(Names(*reader), Texts{});
  AddCalendar(*Open(), "ann");
  EXPECT_EQ(Names(*reader), Texts{});
  AddCalendar(*reader, "bob");
  EXPECT_EQ(Names(*reader), (Texts{"ann", "bob"}));
}

TEST_F(SqliteFile, ReadsAQueryToItsEndWhileItsRowsAreWritten) {
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

TEST_F(SqliteFile, ReadsOneQueryInsideItself) {
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

TEST_F(SqliteFile, KeepsATransactionTogether) {
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
  EXPECT_TRUE(connection->TryExecute(Statement("ALTER TABLE Calendars ADD COLUMN Weekend TEXT (50)")));
  EXPECT_FALSE(connection->TryExecute(Statement("ALTER TABLE Calendars ADD COLUMN Weekend TEXT (50)")));
  connection->Execute(Statement("UPDATE Calendars SET Weekend = '1, 7'"));
  connection->Commit();
  EXPECT_THROW(connection->Commit(), DatabaseError);
  EXPECT_EQ(Column(*Open(), Statement("SELECT Weekend FROM Calendars"), "Weekend"), Texts{"1, 7"});
}

TEST_F(SqliteFile, ForgetsWhatAConnectionDidNotCommit) {
  {
    const auto connection = Open();
    connection->Begin();
    AddCalendar(*connection, "ann");
  }
  EXPECT_EQ(Names(*Open()), Texts{});
  AddCalendar(*Open(), "bob");
  EXPECT_EQ(Names(*Open()), Texts{"bob"});
}

TEST_F(SqliteFile, FailsAWriteThatWaitedTooLongAndGoesOn) {
  const auto writer = Open();
  const auto other = Open();
  writer->Begin();
  AddCalendar(*writer, "ann");
  EXPECT_THROW(AddCalendar(*other, "bob"), DatabaseError);
  EXPECT_FALSE(other->TryExecute(Statement("DELETE FROM Calendars")));
  EXPECT_THROW(other->Begin(), DatabaseError);
  writer->Commit();
  AddCalendar(*other, "bob");
  EXPECT_EQ(Names(*other), (Texts{"ann", "bob"}));
}

TEST_F(SqliteFile, TakesWritesOfSeveralThreads) {
  SqliteDriver patient(regional_);
  InFourThreads([&] {
    for (int i = 0; i < 10; ++i) {
      const auto connection = patient.Open(file_);
      Names(*connection);
      AddCalendar(*connection, "ann");
    }
  });
  EXPECT_EQ(Names(*Open()).size(), 40U);
}

TEST_F(SqliteFile, OutlivesItsConnectionInAnOpenQuery) {
  AddCalendar(*Open(), "ann");
  auto connection = Open();
  const auto rows = connection->Query(Statement("SELECT Name FROM Calendars"));
  connection.reset();
  EXPECT_EQ(Column(*rows, "Name"), Texts{"ann"});
}

TEST_F(SqliteFile, ServesMoreStatementsThanItRemembers) {
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
