#include "drivers/sqlite/kept_results.h"

#include <functional>
#include <utility>

#include <malloc.h>
#include <sqlite3.h>

#include "drivers/database_fixture.h"
#include "drivers/spliced.h"
#include "drivers/sqlite/base_schema.h"
#include "drivers/sqlite/file_history.h"
#include "drivers/sqlite/handles.h"
#include "drivers/sqlite/sqlite_driver.h"
#include "store/sharing_tables.h"

namespace orlune {
namespace {

class KeptResults : public testing::DatabaseFixture {
 protected:
  KeptResults() : DatabaseFixture(testing::Engine::kSqlite) { AddCalendar(*Open(), "ann"); }

  /// As another program does.
  static void RunRaw(const std::string& file, const char* sql) {
    sqlite3* opened = nullptr;
    EXPECT_EQ(sqlite3_open(file.c_str(), &opened), SQLITE_OK);
    sqlite::Run(sqlite::DatabaseHandle(opened).get(), sql);
  }

  /// Creates another database file with that calendar.
  std::string MakeOther(const char* calendar) const {
    const std::string other = file_ + ".other";
    CreateBaseDatabase(other);
    RunRaw(other, ("INSERT INTO Calendars (Name) VALUES ('" + std::string(calendar) + "')").c_str());
    return other;
  }

  /// The names of the calendars, with the rows as they are in memory. Two results with the same rows were
  /// read only once.
  struct Shown {
    std::string Names;
    std::unique_ptr<ResultSet> Rows;
    const char* Place;
  };
  static Shown Show(Connection& connection) {
    Shown shown{"", connection.Query(Statement("SELECT Name FROM Calendars")), nullptr};
    while (shown.Rows->Next()) {
      const Value name = shown.Rows->Get(0);
      if (shown.Place == nullptr) shown.Place = std::get<std::string_view>(name).data();
      shown.Names += Text(name) + ' ';
    }
    return shown;
  }

  void Write(const Statement& statement) { Open()->Execute(statement); }

  const std::string file_ = place_.Path();
};

TEST_F(KeptResults, ServeUntilTheirTableIsChanged) {
  const Statement addBob("INSERT INTO Calendars (Name) VALUES ('bob')");
  struct Change {
    const char* Name;
    std::function<void()> Make;
    const char* Names;
    bool IsKept = false;
  };
  const std::vector<Change> changes{
      {"nothing", [] {}, "ann ", true},
      {"another table", [&] { Write(Statement("INSERT INTO Messages (Subject) VALUES ('a')")); }, "ann ",
       true},
      {"a statement that finds no row",
       [&] { Write(Statement("UPDATE Messages SET Subject = 'b' WHERE Subject = 'z'")); }, "ann ", true},
      {"a transaction that is rolled back",
       [&] {
         const auto connection = Open();
         connection->Begin();
         connection->Execute(addBob);
         EXPECT_EQ(Show(*connection).Names, "ann bob ");
       },
       "ann ", true},
      {"the log merged into the file", [&] { RunRaw(file_, "PRAGMA wal_checkpoint(PASSIVE)"); }, "ann ",
       true},
      {"a save", [&] { Write(addBob); }, "ann bob "},
      {"a transaction over two tables",
       [&] {
         const auto connection = Open();
         connection->Begin();
         connection->Execute(Statement("DELETE FROM Calendars WHERE Name = 'bob'"));
         connection->Execute(Statement("DELETE FROM Messages"));
         connection->Commit();
       },
       "ann "},
      {"another program", [&] { RunRaw(file_, "INSERT INTO Calendars (Name) VALUES ('cleo')"); },
       "ann cleo "},
      {"another program, then a save to another table",
       [&] {
         RunRaw(file_, "DELETE FROM Calendars WHERE Name = 'cleo'");
         Write(Statement("DELETE FROM Messages"));
       },
       "ann "},
      {"the log begun anew, by another program",
       [&] {
         RunRaw(file_, "PRAGMA wal_checkpoint(TRUNCATE); INSERT INTO Calendars (Name) VALUES ('dora')");
       },
       "ann dora "},
      {"a trigger of the file",
       [&] {
         RunRaw(file_,
                "CREATE TRIGGER T AFTER INSERT ON Messages BEGIN DELETE FROM Calendars WHERE Name = 'dora'; "
                "END");
         EXPECT_EQ(Show(*Open()).Names, "ann dora ");
         Write(Statement("INSERT INTO Messages (Subject) VALUES ('a')"));
       },
       "ann "},
      {"a copy over the file",
       [&] {
         const auto source = sqlite::OpenExisting(MakeOther("eve"), {});
         const auto target = sqlite::OpenExisting(file_, {});
         sqlite3_backup* backup = sqlite3_backup_init(target.get(), "main", source.get(), "main");
         EXPECT_EQ(sqlite3_backup_step(backup, -1), SQLITE_DONE);
         EXPECT_EQ(sqlite3_backup_finish(backup), SQLITE_OK);
       },
       "eve "},
  };
  for (const Change& change : changes) {
    const Shown before = Show(*Open());
    change.Make();
    const Shown after = Show(*Open());
    EXPECT_EQ(after.Names, change.Names) << change.Name;
    EXPECT_EQ(after.Place == before.Place, change.IsKept) << change.Name;
  }
}

TEST_F(KeptResults, ServeUntilATriggerOfOursWritesToTheirTable) {
  const auto connection = Open();
  connection->Execute(Statement("ALTER TABLE Events ADD COLUMN EventType TEXT (50)"));
  CreateSharingTables(*connection);
  const auto changes = [&] {
    return Column(*Open(), Statement("SELECT Calendar FROM CalendarChanges"), "Calendar");
  };
  EXPECT_EQ(changes(), Texts{});
  const Shown before = Show(*Open());
  Write(Statement("INSERT INTO Events (EventID, Owner) VALUES (7, 'ann')"));
  EXPECT_EQ(changes(), Texts{"ann"});
  EXPECT_EQ(Show(*Open()).Place, before.Place);
}

TEST_F(KeptResults, FollowTheTables) {
  const Statement query("SELECT * FROM Calendars");
  const auto columns = [&] { return Open()->Query(query)->Column("Extra"); };
  EXPECT_THROW(columns(), DatabaseError);
  Write(Statement("ALTER TABLE Calendars ADD COLUMN Extra LONG"));
  EXPECT_GT(columns(), 0);
  RunRaw(file_, "ALTER TABLE Calendars DROP COLUMN Extra");
  EXPECT_THROW(columns(), DatabaseError);
  RunRaw(file_, "DROP TABLE Calendars");
  EXPECT_THROW(Open()->Query(query), DatabaseError);
}

TEST_F(KeptResults, AreOfTheStateThatARequestReads) {
  const auto early = Open();
  const Shown first = Show(*early);
  RunRaw(file_, "INSERT INTO Calendars (Name) VALUES ('bob'); INSERT INTO Messages (Subject) VALUES ('a')");
  const Statement messages("SELECT Subject FROM Messages");
  EXPECT_EQ(Column(*Open(), messages, "Subject"), Texts{"a"});
  EXPECT_EQ(Column(*early, messages, "Subject"), Texts{});
  const Shown second = Show(*Open());
  EXPECT_EQ(second.Names, "ann bob ");
  EXPECT_EQ(Show(*early).Names, "ann ");
  EXPECT_EQ(Show(*Open()).Place, second.Place);
  AddCalendar(*early, "cleo");
  EXPECT_EQ(Show(*early).Names, "ann bob cleo ");
}

/// Runs an action when a database that was opened meanwhile begins or ends a statement.
class Interruption {
 public:
  Interruption(unsigned event, std::string_view statement) : event_(event), statement_(statement) {
    current_ = this;
    sqlite3_auto_extension(reinterpret_cast<void (*)()>(Watch));
  }
  ~Interruption() {
    sqlite3_reset_auto_extension();
    EXPECT_FALSE(action_);
  }
  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;

  /// Runs `action` at the next such statement.
  void Arm(std::function<void()> action) { action_ = std::move(action); }

 private:
  static int Watch(sqlite3* database, char** /*error*/, const sqlite3_api_routines* /*routines*/) {
    return sqlite3_trace_v2(database, current_->event_, Notice, nullptr);
  }
  static int Notice(unsigned /*event*/, void* /*context*/, void* statement, void* /*detail*/) {
    if (current_->action_ && sqlite3_sql(static_cast<sqlite3_stmt*>(statement)) == current_->statement_)
      std::exchange(current_->action_, nullptr)();
    return 0;
  }

  static inline Interruption* current_ = nullptr;
  const unsigned event_;
  const std::string_view statement_;
  std::function<void()> action_;
};

TEST_F(KeptResults, WithstandACommitAtAnyMoment) {
  const auto addBob = [&] { RunRaw(file_, "INSERT INTO Calendars (Name) VALUES ('bob')"); };
  const Statement numbers("SELECT CalendarID FROM Calendars");
  struct Moment {
    const char* Name;
    unsigned Event;
    const char* Statement;
    const char* Written;
  };
  for (const Moment& moment : std::vector<Moment>{
           {"before a state is read", SQLITE_TRACE_STMT, "PRAGMA schema_version", ""},
           {"after a state is read", SQLITE_TRACE_PROFILE, "PRAGMA schema_version", ""},
           {"after a save", SQLITE_TRACE_PROFILE, "COMMIT", "INSERT INTO Messages (Subject) VALUES ('a')"},
           {"after a save that changes nothing", SQLITE_TRACE_PROFILE, "COMMIT",
            "UPDATE Messages SET Subject = 'a' WHERE Subject = 'z'"},
       }) {
    RunRaw(file_, "DELETE FROM Calendars WHERE Name = 'bob'");
    SqliteDriver driver(regional_);
    const auto early = driver.Open(file_);
    Interruption interruption(moment.Event, moment.Statement);
    auto connection = driver.Open(file_);
    EXPECT_EQ(Show(*connection).Names, "ann ");
    if (*moment.Written == '\0') {
      connection.reset();
      interruption.Arm(addBob);
      Column(*driver.Open(file_), numbers, "CalendarID");
    } else {
      connection->Begin();
      connection->Execute({moment.Written, {}});
      interruption.Arm(addBob);
      connection->Commit();
    }
    EXPECT_EQ(Show(*driver.Open(file_)).Names, "ann bob ") << moment.Name;
    EXPECT_EQ(Show(*early).Names, "ann ") << moment.Name;
    EXPECT_EQ(Column(*early, numbers, "CalendarID").size(), 1U) << moment.Name;
    EXPECT_EQ(Column(*driver.Open(file_), numbers, "CalendarID").size(), 2U) << moment.Name;
  }
}

TEST_F(KeptResults, AreTheRowsOfTheVeryStatement) {
  AddCalendar(*Open(), "' OR Name = 'ann");
  const testing::Spliced odd("SELECT Name FROM Calendars WHERE Name = '{}'", {"' OR Name = 'ann"});
  const testing::Spliced plain("SELECT Name FROM Calendars WHERE Name = '' OR Name = '{}'", {"ann"});
  ASSERT_EQ(StatementText(odd).Text, StatementText(plain).Text);
  EXPECT_EQ(Column(*Open(), odd, "Name"), Texts{"' OR Name = 'ann"});
  EXPECT_EQ(Column(*Open(), plain, "Name"), Texts{"ann"});
}

TEST_F(KeptResults, LeaveALargeResultToBeReadWhileItRuns) {
  SqliteDriver small(regional_, {.KeptBytes = 100});
  for (const char* name : {"bob", "cleo", "dora"}) AddCalendar(*Open(), name);
  auto connection = small.Open(file_);
  const auto rows = connection->Query(Statement("SELECT Name FROM Calendars"));
  ASSERT_TRUE(rows->Next());
  connection->Execute(Statement("DELETE FROM Calendars WHERE Name <> 'cleo'"));
  EXPECT_EQ(Names(*connection), Texts{"cleo"});
  connection.reset();
  EXPECT_EQ(Text(rows->Get(0)), "ann");
  EXPECT_EQ(Column(*rows, "Name"), (Texts{"bob", "cleo", "dora"}));
}

/// `count` rows of a text of that length.
std::shared_ptr<const sqlite::RowBlock> MakeRows(sqlite3* database, int count, int length) {
  auto origin = std::make_shared<sqlite::CachedStatement>();
  origin->Translation.Columns = {{"Text", dialect::ColumnType::kText}};
  const std::string sql = "WITH n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " +
                          std::to_string(count) + ") SELECT hex(zeroblob(" + std::to_string(length / 2) +
                          ")) FROM n";
  const sqlite::RunningStatement running(origin, sqlite::Prepare(database, sql));
  return std::make_shared<const sqlite::RowBlock>(running, 1'000'000);
}

TEST_F(KeptResults, TakeNoMoreMemoryThanAllowed) {
  constexpr std::size_t kAllowed = 1'000'000;
  const auto database = sqlite::OpenExisting(file_, {});
  sqlite::FileHistory history;
  const auto state = history.StateOf({1});
  sqlite::KeptResults results(kAllowed);
  const auto key = [](int i) { return std::to_string(i) + std::string(100, ' '); };

  results.Keep("large", 1, *state, MakeRows(database.get(), 1, 20'000));
  EXPECT_EQ(results.Find("large", *state), nullptr);
  [[maybe_unused]] const auto used = mallinfo2().uordblks;
  for (int i = 0; i < 3000; ++i) {
    results.Keep(key(i), 1, *state, MakeRows(database.get(), i % 10, 100));
    EXPECT_NE(results.Find(key(0), *state), nullptr);
    ASSERT_LE(results.Bytes(), kAllowed);
  }
  EXPECT_GT(results.Bytes(), kAllowed * 9 / 10);
  EXPECT_EQ(results.Find(key(1), *state), nullptr);
  EXPECT_NE(results.Find(key(2999), *state), nullptr);
#ifndef __SANITIZE_ADDRESS__
  EXPECT_NEAR(static_cast<double>(mallinfo2().uordblks - used), kAllowed, kAllowed / 10);
#endif
}

TEST(FileHistory, TellsWhatACommitOfThisProcessChangedAndNothingOfOthers) {
  constexpr sqlite::TableSet kWritten = 1;
  constexpr sqlite::TableSet kOther = 2;
  sqlite::FileHistory history;
  const auto first = history.StateOf({1});
  {
    const sqlite::FileHistory::Committing committing(history);
    EXPECT_EQ(history.StateOf({2}), nullptr);
    EXPECT_EQ(history.StateOf({1}), first);
    history.AddCommit({1}, {2}, kWritten);
  }
  const auto second = history.StateOf({2});
  EXPECT_NE(second->LastChange(kWritten), first->LastChange(kWritten));
  EXPECT_EQ(second->LastChange(kOther), first->LastChange(kOther));
  EXPECT_EQ(second->LastChange(kWritten | kOther), second->LastChange(kWritten));

  history.AddCommit({3}, {4}, kWritten);  // somebody else wrote the state 3
  const auto fourth = history.StateOf({4});
  EXPECT_NE(fourth->LastChange(kOther), second->LastChange(kOther));
  EXPECT_EQ(fourth->LastChange(kOther), history.StateOf({3})->LastChange(kOther));

  // What descends from the second state still holds its other tables, whatever came in between.
  history.AddCommit({2}, {5}, kWritten);
  EXPECT_EQ(history.StateOf({5})->LastChange(kOther), first->LastChange(kOther));
}

}  // namespace
}  // namespace orlune
