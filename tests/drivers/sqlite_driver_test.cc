#include "drivers/sqlite/sqlite_driver.h"

#include <fstream>

#include <sqlite3.h>
#include <unistd.h>

#include "drivers/database_fixture.h"
#include "drivers/sqlite/base_schema.h"
#include "drivers/sqlite/handles.h"
#include "drivers/sqlite/unicode_text.h"

namespace orlune {
namespace {

/// Drops superuser rights while it exists, if the tests run as root.
class Unprivileged {
 public:
  Unprivileged() { EXPECT_TRUE(!isRoot_ || seteuid(65534) == 0); }
  ~Unprivileged() { EXPECT_TRUE(!isRoot_ || seteuid(0) == 0); }
  Unprivileged(const Unprivileged&) = delete;
  Unprivileged& operator=(const Unprivileged&) = delete;

 private:
  const bool isRoot_ = geteuid() == 0;
};

class SqliteFile : public testing::DatabaseFixture {
 protected:
  SqliteFile() : DatabaseFixture(testing::Engine::kSqlite) {}

  /// The file as another program opens it.
  sqlite::DatabaseHandle OpenRaw() const {
    sqlite3* opened = nullptr;
    EXPECT_EQ(sqlite3_open(file_.c_str(), &opened), SQLITE_OK);
    return sqlite::DatabaseHandle(opened);
  }

  /// Why `path` cannot be opened; empty when it can.
  std::string Refusal(const std::string& path) {
    try {
      const auto opened = driver_->Open(path);
      return "";
    } catch (const DatabaseError& error) {
      return error.what();
    }
  }

  const std::string file_ = place_.Path();
  const std::filesystem::path folder_ = std::filesystem::path(file_).parent_path();
};

TEST_F(SqliteFile, IsNotOpenedUnlessItHasACalendar) {
  const auto path = [&](const char* name) { return (folder_ / name).string(); };
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
  std::filesystem::permissions(folder_, std::filesystem::perms::all);
  std::filesystem::permissions(file_, std::filesystem::perms::none);
  const Unprivileged unprivileged;
  EXPECT_NE(Refusal(file_).find("ermission denied"), std::string::npos) << Refusal(file_);
}

TEST_F(SqliteFile, IsNotOpenedWhileLockedExclusively) {
  const auto raw = OpenRaw();
  sqlite::Run(raw.get(), "PRAGMA journal_mode = DELETE");
  sqlite::Run(raw.get(), "BEGIN EXCLUSIVE");
  EXPECT_NE(Refusal(file_).find("database is locked"), std::string::npos);
  sqlite::Run(raw.get(), "COMMIT");
  EXPECT_EQ(Refusal(file_), "");
}

TEST_F(SqliteFile, IsReadThoughItCannotBeWritten) {
  sqlite::Run(OpenRaw().get(), "PRAGMA journal_mode = DELETE");
  std::filesystem::permissions(folder_, std::filesystem::perms::all);
  std::filesystem::permissions(file_, std::filesystem::perms(0444));
  const Unprivileged unprivileged;
  const auto connection = Open();
  EXPECT_EQ(Names(*connection), Texts{});
  EXPECT_THROW(AddCalendar(*connection, "ann"), DatabaseError);
}

TEST_F(SqliteFile, IsReopenedWhenTheFileWasReplaced) {
  AddCalendar(*Open(), "old");
  CreateBaseDatabase(folder_ / "other.db");
  AddCalendar(*driver_->Open(folder_ / "other.db"), "new");
  sqlite::Run(sqlite::OpenExisting(folder_ / "other.db", {}).get(), "PRAGMA wal_checkpoint(TRUNCATE)");
  const auto open = Open();
  std::filesystem::rename(folder_ / "other.db", file_);
  EXPECT_THROW(AddCalendar(*open, "lost"), DatabaseError);
  EXPECT_EQ(Names(*Open()), Texts{"new"});
  std::filesystem::remove(file_);
  EXPECT_THROW(Open(), DatabaseError);
}

TEST_F(SqliteFile, IsNeitherOverwrittenNorLeftIncomplete) {
  AddCalendar(*Open(), "ann");
  const auto fail = [](const std::filesystem::path&) { throw DatabaseError("no"); };
  EXPECT_THROW(CreateBaseDatabase(file_), DatabaseError);
  EXPECT_THROW(CreateBaseDatabase(folder_ / "missing" / "calendar.db"), DatabaseError);
  EXPECT_THROW(CreateBaseDatabase(folder_ / "failed.db", fail), DatabaseError);
  EXPECT_EQ(Names(*Open()), Texts{"ann"});
  for (const auto& entry : std::filesystem::directory_iterator(folder_))
    EXPECT_EQ(entry.path().stem(), "calendar");
}

TEST_F(SqliteFile, IsReadableForItsOwnerOnly) {
  using std::filesystem::perms;
  AddCalendar(*Open(), "ann");
  Texts files;
  for (const auto& entry : std::filesystem::directory_iterator(folder_)) {
    files.push_back(entry.path());
    EXPECT_EQ(entry.status().permissions(), perms::owner_read | perms::owner_write) << entry.path();
  }
  EXPECT_EQ(files.size(), 3U);
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

TEST_F(SqliteFile, ReadsInvalidDatesAsNull) {
  const auto raw = OpenRaw();
  sqlite::Run(raw.get(), "INSERT INTO Events (BeginDate, BeginTime) VALUES ('soon', '25:00:00')");
  const auto connection = Open();
  const auto rows = connection->Query(Statement("SELECT BeginDate, BeginTime FROM Events"));
  ASSERT_TRUE(rows->Next());
  EXPECT_EQ(rows->Get(0), Value());
  EXPECT_EQ(rows->Get(1), Value());
}

TEST(LikePattern, MatchesWhatFoldsToSeveralLettersAsOne) {
  EXPECT_TRUE(sqlite::LikePattern("stra_e").Matches("Straße"));
  EXPECT_FALSE(sqlite::LikePattern("stra__e").Matches("Straße"));
  EXPECT_TRUE(sqlite::LikePattern("_z").Matches("\xFFz"));
}

}  // namespace
}  // namespace orlune
