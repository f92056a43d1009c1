#include "commands/copy.h"

#include <algorithm>
#include <limits>
#include <map>
#include <set>
#include <sstream>
#include <tuple>

#include "commands/commands_fixture.h"
#include "commands/current_tables.h"
#include "commands/interrupted_engine.h"
#include "commands/row_digest.h"
#include "store/field.h"

namespace orlune::testing {
namespace {

using std::chrono::hours;
using std::chrono::minutes;
using std::chrono::seconds;
using std::chrono::year;

/// Copies between engines, in all directions.
class CopyTest : public CommandsFixture, public ::testing::WithParamInterface<std::tuple<Engine, Engine>> {
 protected:
  void Copy(const NamedDatabase& from, const NamedDatabase& to) {
    std::ostringstream progressText;
    CopyProgress progress(progressText, false);
    output_.str("");
    CopyDatabase(from, to, output_, progress);
  }
  void Copy() { Copy(Named(from_), Named(to_)); }
  /// The error of a copy that is refused; "" when it succeeds.
  std::string Refusal(const NamedDatabase& from, const NamedDatabase& to) {
    try {
      Copy(from, to);
      return "";
    } catch (const std::exception& error) {
      return error.what();
    }
  }

  struct TableContents {
    std::vector<StoredRow> Rows;
    std::int64_t LastCounter = 0;
    bool operator==(const TableContents&) const = default;
  };
  std::map<std::string, TableContents> Contents(const DatabasePlace& place) {
    std::map<std::string, TableContents> contents;
    const auto database = OpenToRead(place);
    for (const dialect::Table& table : TablesInForm(SchemaForm::kCurrent).Tables)
      contents[table.Name] = {database->Rows(table, kBeforeFirstRow, 100'000),
                              database->LastCounter(table.Name)};
    return contents;
  }
  bool IsComplete(const DatabasePlace& place) {
    return OpenToRead(place)->MissingIndexes().empty() && !OpenToRead(place)->UnfinishedCopySource();
  }

  static dialect::Table TableOf(const std::string& name) {
    return *TablesInForm(SchemaForm::kCurrent).Find(name);
  }
  /// More rows than one batch.
  void AddEvents(const DatabasePlace& place, std::int64_t count) {
    const dialect::Table table{"Events",
                               {{"EventID", dialect::ColumnType::kCounter},
                                {"EventName", dialect::ColumnType::kText},
                                {"Private", dialect::ColumnType::kYesNo}}};
    std::vector<StoredRow> rows;
    for (std::int64_t i = 1; i <= count; ++i) rows.push_back({i, "event " + std::to_string(i), i % 2 == 0});
    OpenToFill(place)->Insert(table, rows);
  }

  DatabasePlace from_{std::get<0>(GetParam())};
  DatabasePlace to_{std::get<1>(GetParam())};
  std::ostringstream output_;
};

/// Files, unlike servers, may contain values that do not fit their columns.
using CopyFromFileTest = CopyTest;

TEST_P(CopyTest, KeepsEveryValueExactly) {
  MakeCurrent(from_);
  const std::string longText(100'000, 'x');
  const Date first = year{100} / 1 / 1;
  const Date last = year{9999} / 12 / 31;
  std::vector<StoredRow> messages;
  for (const std::string& text : std::vector<std::string>{
           "", " ", "'", "''); DROP TABLE Events; --", "\"", "\\", "a\r\nb\tc", "*1", "Null", "- - - -",
           "%s%n", "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80", "e\xCC\x81", "\xEF\xBF\xBD", longText}) {
    const auto id = static_cast<std::int64_t>(7 * messages.size() + 3);
    messages.push_back({id, text, text, DateTime{last, hours{23} + minutes{59} + seconds{59}}, text, text,
                        messages.size() % 2 == 0, std::monostate{}});
  }
  OpenToFill(from_)->Insert(TableOf("Messages"), messages);
  const StoredField null;
  const std::vector<StoredRow> events{{std::int64_t{1}, "x", "Ben", "none", first, null, TimeOfDay{0},
                                       TimeOfDay{86'399}, null, "", null, "", null, false, null, "", null},
                                      {std::int64_t{1} << 40, null, null, null, null, last, null, null, null,
                                       null, null, null, longText, true, null, null, ""}};
  OpenToFill(from_)->Insert(TableOf("Events"), events);
  Run(from_, Statement("UPDATE Calendars SET DayBegin = {}, DayEnd = {} WHERE Name = 'Ben'",
                       std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::min()));

  Copy();
  auto copied = Contents(to_);
  EXPECT_TRUE(copied == Contents(from_) && IsComplete(to_));
  EXPECT_EQ(copied["Messages"].Rows, messages);
  EXPECT_EQ(copied["Events"].Rows, events);
  EXPECT_EQ(output_.str().find("note"), std::string::npos) << output_.str();
}

TEST_P(CopyTest, NumbersNewRowsAsItsSourceWouldHave) {
  MakeCurrent(from_);
  AddEvents(from_, 5);
  Run(from_, Statement("INSERT INTO Events (EventName) VALUES ('six')"));
  Run(from_, Statement("DELETE FROM Events WHERE EventID > 3"));
  Copy();
  Run(to_, Statement("INSERT INTO Events (EventName) VALUES ('seven')"));
  EXPECT_EQ(OpenToRead(to_)->HighestNumber(TableOf("Events")), 7);
}

TEST_P(CopyTest, ResumesAfterAnyInterruption) {
  MakeCurrent(from_);
  AddEvents(from_, 1001);
  Interruption never(-1, false);
  InterruptedEngine counted(Named(to_).Engine, never);
  Copy(Named(from_), {counted, Named(to_).Address});
  const int last = never.Writes() - 1;
  ASSERT_GT(last, 10);
  // An interruption after a write is the same as one before the next.
  for (int at = 0; at <= last + 1; ++at) {
    SCOPED_TRACE(at);
    const bool isComplete = at > last;
    DatabasePlace target(std::get<1>(GetParam()));
    Interruption interruption(std::min(at, last), isComplete);
    InterruptedEngine engine(Named(target).Engine, interruption);
    EXPECT_EQ(Refusal(Named(from_), {engine, Named(target).Address}), "interrupted");
    EXPECT_EQ(!Refusal(Named(from_), Named(target)).empty(), isComplete)
        << "only a complete copy has no end to go on to";
    EXPECT_TRUE(Contents(target) == Contents(from_) && IsComplete(target));
  }
}

TEST_P(CopyTest, IsNotServedBeforeItIsComplete) {
  MakeCurrent(from_);
  AddEvents(from_, 2500);
  const int inTheMiddleOfTheEvents = 7;
  Interruption interruption(inTheMiddleOfTheEvents, false);
  InterruptedEngine engine(Named(to_).Engine, interruption);
  EXPECT_EQ(Refusal(Named(from_), {engine, Named(to_).Address}), "interrupted");
  EXPECT_THROW(to_.MakeDriver(regional_)->Open(to_.Path()), DatabaseError);

  DatabasePlace other(std::get<0>(GetParam()));
  MakeCurrent(other);
  EXPECT_NE(Refusal(Named(other), Named(to_)).find("is an incomplete copy of"), std::string::npos);
  DatabasePlace another(std::get<1>(GetParam()));
  EXPECT_NE(Refusal(Named(to_), Named(another)).find("is itself an incomplete copy"), std::string::npos);

  Copy();
  EXPECT_NE(to_.MakeDriver(regional_)->Open(to_.Path()), nullptr);
}

TEST_P(CopyTest, DetectsChangesOfItsSource) {
  for (const Statement& change : {Statement("UPDATE Events SET Owner = '' WHERE EventID = 1"),
                                  Statement("DELETE FROM Events WHERE EventID = 1")}) {
    DatabasePlace source(std::get<0>(GetParam()));
    DatabasePlace target(std::get<1>(GetParam()));
    MakeCurrent(source);
    AddEvents(source, 2500);
    const int afterTheEvents = 9;
    Interruption interruption(afterTheEvents, true);
    InterruptedEngine engine(Named(target).Engine, interruption);
    EXPECT_EQ(Refusal(Named(source), {engine, Named(target).Address}), "interrupted");
    Run(source, change);
    EXPECT_NE(Refusal(Named(source), Named(target)).find("differs from its source"), std::string::npos);
    EXPECT_NE(output_.str().find("DIFFERENT"), std::string::npos);
    EXPECT_THROW(target.MakeDriver(regional_)->Open(target.Path()), DatabaseError);
  }
}

TEST_P(CopyTest, DoesNotChangeATargetWithRows) {
  MakeCurrent(from_);
  MakeCurrent(to_);
  Run(to_, Statement("UPDATE Calendars SET FriendlyName = 'mine'"));
  const auto before = Contents(to_);
  EXPECT_NE(Refusal(Named(from_), Named(to_)).find("is not empty: table Calendars has rows"),
            std::string::npos);
  EXPECT_TRUE(Contents(to_) == before);
  EXPECT_NE(Refusal(Named(from_), Named(from_)).find("into itself"), std::string::npos);
}

TEST_P(CopyTest, CopiesADatabaseBeforeItsUpgrade) {
  Make(from_);
  Run(from_, Statement("UPDATE Calendars SET MondayFirst = no WHERE Name = 'Ben'"));
  Copy();
  EXPECT_EQ(OpenToRead(from_)->Tables().Find("Calendars")->Find("ClockMode"), nullptr);
  UpgradeSchema(*from_.MakeDriver(regional_)->Open(from_.Path()));
  EXPECT_TRUE(Contents(to_) == Contents(from_) && IsComplete(to_));
  const auto rows = to_.MakeDriver(regional_)
                        ->Open(to_.Path())
                        ->Query(Statement("SELECT FirstDayOfWeek FROM Calendars WHERE Name = 'Ben'"));
  ASSERT_TRUE(rows->Next());
  EXPECT_EQ(NumberOf(rows->Get(0)), 1);
}

TEST_P(CopyTest, CopiesWhatDevicesHaveBrought) {
  MakeShared(from_);
  for (const Statement& statement :
       {Statement("INSERT INTO Events (Owner, Type) VALUES ('ben', 'listed')"),
        Statement("INSERT INTO EventDays (EventID, EventDay, Role) VALUES (1, '3/5/2004', 'listed')"),
        Statement("INSERT INTO CalendarObjects (ResourceName, ObjectText) VALUES ('a.ics', 'BEGIN')"),
        Statement("INSERT INTO ObjectEvents (ObjectID, EventID, Place) VALUES (1, 1, 0)"),
        Statement("INSERT INTO ExchangeIdentity (DatabaseName) VALUES ('abc')"),
        Statement("INSERT INTO AppPasswords (Login, Digest) VALUES ('ben', 'd')"),
        Statement("INSERT INTO CalendarLogs (LogName, TrimmedTo) VALUES ('log', 0)")})
    Run(from_, statement);
  Copy();
  EXPECT_TRUE(Contents(to_) == Contents(from_) && IsComplete(to_));
  EXPECT_EQ(output_.str().find("note"), std::string::npos) << output_.str();
  const auto source = OpenToRead(from_);
  const auto target = OpenToRead(to_);
  for (const dialect::Table& table : SharingTables().Tables) {
    const auto rows = target->Rows(table, kBeforeFirstRow, 10);
    EXPECT_EQ(rows, IsOfOneDatabase(table.Name) ? std::vector<StoredRow>()
                                                : source->Rows(table, kBeforeFirstRow, 10))
        << table.Name;
  }
  EXPECT_EQ(target->MissingTriggers(), std::vector<std::string>());
  Run(to_, Statement("UPDATE Events SET EventName = 'x'"));
  EXPECT_EQ(OpenToRead(to_)->RowCount("CalendarChanges"), 1);
}

TEST_P(CopyFromFileTest, ReportsWhatItCannotKeep) {
  MakeCurrent(from_);
  AddEvents(from_, 4);
  for (const char* sql :
       {"UPDATE Events SET BeginTime = '25:00:00' WHERE EventID < 3",
        "UPDATE Events SET BeginDate = '0099-12-31' WHERE EventID = 4",
        "UPDATE Events SET Comments = CAST(x'61FF62' AS TEXT) WHERE EventID = 4",
        "UPDATE Calendars SET DayBegin = 'early' WHERE Name = 'Ben'", "CREATE TABLE Sessions (Id TEXT)",
        "CREATE TABLE Rooms (Id TEXT)", "ALTER TABLE Events ADD COLUMN Room TEXT"})
    from_.RunNative(sql);
  Copy();
  for (const char* note :
       {"note: 2 unreadable values of Events.BeginTime", "note: 1 unreadable value of Events.BeginDate",
        "note: 1 unreadable value of Events.Comments", "note: 1 unreadable value of Calendars.DayBegin",
        "note: table Rooms is not part of a calendar", "note: column Events.Room is not part of a calendar"})
    EXPECT_NE(output_.str().find(note), std::string::npos) << note << "\n" << output_.str();
  EXPECT_EQ(output_.str().find("Sessions"), std::string::npos);
  const StoredRow fourth = Contents(to_)["Events"].Rows[3];
  EXPECT_EQ(fourth[4], StoredField());
  EXPECT_EQ(fourth[12], StoredField("a\xEF\xBF\xBD"
                                    "b"));
}

std::string NameOfDirection(const ::testing::TestParamInfo<std::tuple<Engine, Engine>>& direction) {
  const auto name = [](Engine engine) { return engine == Engine::kSqlite ? "File" : "Server"; };
  return std::string(name(std::get<0>(direction.param))) + "To" + name(std::get<1>(direction.param));
}

const auto kEngines = ::testing::Values(Engine::kSqlite, Engine::kPostgresql);
INSTANTIATE_TEST_SUITE_P(Engines, CopyTest, ::testing::Combine(kEngines, kEngines), NameOfDirection);
INSTANTIATE_TEST_SUITE_P(Engines, CopyFromFileTest,
                         ::testing::Combine(::testing::Values(Engine::kSqlite), kEngines), NameOfDirection);

TEST(RowDigest, DistinguishesSimilarRows) {
  const std::vector<std::vector<StoredRow>> different{{},
                                                      {{}},
                                                      {{"ab", ""}},
                                                      {{"a", "b"}},
                                                      {{"", "ab"}},
                                                      {{"ab"}, {""}},
                                                      {{""}, {"ab"}},
                                                      {{"ab", StoredField()}},
                                                      {{StoredField(), "ab"}},
                                                      {{std::int64_t{1}}},
                                                      {{true}},
                                                      {{"1"}},
                                                      {{TimeOfDay{1}}},
                                                      {{Date{std::chrono::days{1}}}},
                                                      {{DateTime{Date{}, TimeOfDay{1}}}}};
  std::set<std::string> digests;
  for (const auto& rows : different) {
    RowDigest digest;
    for (const StoredRow& row : rows) digest.Add(row);
    digests.insert(digest.Finish());
  }
  EXPECT_EQ(digests.size(), different.size());
}

}  // namespace
}  // namespace orlune::testing
