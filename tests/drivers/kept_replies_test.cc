#include "drivers/postgresql/kept_replies.h"

#include <functional>
#include <utility>

#include <libpq-fe.h>

#include "drivers/database_fixture.h"
#include "drivers/postgresql/postgresql_driver.h"

namespace orlune::postgresql {
namespace {

using Source = std::shared_ptr<const std::string>;

KeptReplyPtr ReplyOf(std::uint64_t state, std::size_t bytes = 0) {
  auto rows = std::make_shared<Reply>();
  rows->Result.reset(PQmakeEmptyPGresult(nullptr, PGRES_TUPLES_OK));
  if (bytes > 0) PQresultAlloc(rows->Result.get(), bytes);
  return std::make_shared<const KeptReply>(
      KeptReply{state, std::make_shared<const dialect::Translation>(), std::move(rows)});
}

TEST(KeptReplies, AreOfTheNewestSnapshotOnly) {
  const auto server = std::make_shared<const std::string>("server");
  enum class After { kKept, kReplaced, kUnchanged };
  struct Case {
    const char* Name;
    const char* Snapshot;
    After Expected;
    Source From = nullptr;  // the same by default
  };
  const std::vector<Case> cases{
      {"the same", "95:101:95,99", After::kKept},
      {"a commit above", "95:102:95,99", After::kReplaced},
      {"a commit in the list", "99:101:99", After::kReplaced},
      {"all committed", "101:101:", After::kReplaced},
      {"older, more were running", "93:101:93,95,99", After::kUnchanged},
      {"older, fewer were running", "100:100:", After::kUnchanged},
      {"more digits", "1000:1000:", After::kReplaced},
      {"equal source", "95:101:95,99", After::kKept, std::make_shared<const std::string>("server")},
      {"another source", "95:101:95,99", After::kReplaced, std::make_shared<const std::string>("other")},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.Name);
    KeptReplies replies(1'000'000);
    const std::uint64_t first = replies.StateOf({server, 0, "95:101:95,99"});
    replies.Keep("query", ReplyOf(first));
    const std::uint64_t state = replies.StateOf({test.From ? test.From : server, 0, test.Snapshot});
    EXPECT_EQ(state == first, test.Expected == After::kKept);
    EXPECT_EQ(state == 0, test.Expected == After::kUnchanged);
    EXPECT_EQ(replies.Find("query") == nullptr, test.Expected == After::kReplaced);
    if (test.Expected == After::kReplaced) replies.Keep("query", ReplyOf(first));
    EXPECT_EQ(replies.Find("query") == nullptr, test.Expected == After::kReplaced) << "kept too late";
  }
}

TEST(KeptReplies, AreOfOneRunOfTheServer) {
  const auto server = std::make_shared<const std::string>("server");
  KeptReplies replies(1'000'000);
  EXPECT_EQ(replies.StateOf({nullptr, 0, "101:101:"}), 0U) << "a standby server";
  const std::uint64_t before = replies.StateOf({server, 0, "101:101:"});
  replies.Keep("query", ReplyOf(before));
  replies.AddConnection();
  EXPECT_EQ(replies.Find("query"), nullptr);
  EXPECT_EQ(replies.StateOf({server, 0, "101:101:"}), 0U) << "asked before the connection";
  const std::uint64_t after = replies.StateOf({server, 1, "101:101:"});
  replies.Keep("query", ReplyOf(before));
  EXPECT_EQ(replies.Find("query"), nullptr);
  replies.Keep("query", ReplyOf(after));
  EXPECT_NE(replies.Find("query"), nullptr);
}

TEST(KeptReplies, AreBoundedInMemory) {
  constexpr std::size_t kMost = 1'000'000;
  KeptReplies replies(kMost);
  const std::uint64_t state = replies.StateOf({std::make_shared<const std::string>("server"), 0, "7:7:"});
  replies.Keep("large", ReplyOf(state, kMost / 64));
  EXPECT_EQ(replies.Find("large"), nullptr);
  replies.Keep("used", ReplyOf(state, 5000));
  for (int i = 0; i < 1000; ++i) {
    replies.Keep(std::to_string(i), ReplyOf(state, 5000));
    EXPECT_NE(replies.Find("used"), nullptr);
  }
  EXPECT_EQ(replies.Find("0"), nullptr);
  EXPECT_NE(replies.Find("999"), nullptr);
  EXPECT_LE(replies.Bytes(), kMost);
  EXPECT_GT(replies.Bytes(), kMost / 2);
  replies.Forget();
  EXPECT_EQ(replies.Bytes(), 0U);
}

class KeptRows : public testing::DatabaseFixture {
 protected:
  KeptRows() : DatabaseFixture(testing::Engine::kPostgresql) { AddCalendar(*Open(), "ann"); }

  /// The names of the calendars, with the rows as they are in memory. Two results with the same rows were
  /// read only once.
  struct Shown {
    Texts Names;
    std::unique_ptr<ResultSet> Rows;
    const char* Place = nullptr;
  };
  static Shown Show(Connection& connection) {
    Shown shown{{}, connection.Query(kNames)};
    while (shown.Rows->Next()) {
      const Value name = shown.Rows->Get(0);
      if (shown.Place == nullptr) shown.Place = std::get<std::string_view>(name).data();
      shown.Names.push_back(Text(name));
    }
    return shown;
  }

  /// Rows that are kept. Other tests may be writing to the same server.
  Shown Keep() {
    for (int attempt = 0; attempt < 1000; ++attempt) {
      Shown shown = Show(*Open());
      if (Show(*Open()).Place == shown.Place) return shown;
    }
    ADD_FAILURE() << "never kept";
    return {};
  }

  void AddAsOtherProgram(const char* name) {
    place_.RunNative("INSERT INTO \"Calendars\" (\"Name\") VALUES ('" + std::string(name) + "')");
  }

  static inline const Statement kNames{"SELECT Name FROM Calendars ORDER BY Name"};
};

TEST_F(KeptRows, ServeUntilACommit) {
  Link running(place_.Path(), {});
  running.Run("BEGIN");
  running.Require(*running.Run("INSERT INTO \"Calendars\" (\"Name\") VALUES ('dora')"));
  struct Change {
    const char* Name;
    std::function<void()> Make;
    Texts Names;
  };
  const std::vector<Change> changes{
      {"a save", [&] { AddCalendar(*Open(), "bob"); }, {"ann", "bob"}},
      {"a transaction that is rolled back",
       [&] {
         const auto connection = Open();
         connection->Begin();
         AddCalendar(*connection, "zoe");
         EXPECT_EQ(Show(*connection).Names, (Texts{"ann", "bob", "zoe"}));
       },
       {"ann", "bob"}},
      {"another program", [&] { AddAsOtherProgram("cleo"); }, {"ann", "bob", "cleo"}},
      {"a transaction that was running",
       [&] { running.Require(*running.Run("COMMIT")); },
       {"ann", "bob", "cleo", "dora"}},
      {"another table of that name",
       [&] {
         place_.RunNative(
             "ALTER TABLE \"Calendars\" RENAME TO \"Old\"; CREATE TABLE \"Calendars\" AS "
             "SELECT * FROM \"Old\" WHERE \"Name\" > 'b'");
       },
       {"bob", "cleo", "dora"}},
  };
  for (const Change& change : changes) {
    SCOPED_TRACE(change.Name);
    const Shown before = Keep();
    change.Make();
    EXPECT_EQ(Show(*Open()).Names, change.Names);
  }
}

TEST_F(KeptRows, AreOfTheOneStateThatARequestReads) {
  const Statement others("SELECT Name FROM Calendars WHERE Name <> 'zoe'");
  const Shown kept = Keep();
  const auto connection = Open();
  EXPECT_EQ(Show(*connection).Names, Texts{"ann"});
  AddAsOtherProgram("bob");
  EXPECT_EQ(Show(*Open()).Names, (Texts{"ann", "bob"}));
  EXPECT_EQ(Show(*connection).Names, Texts{"ann"});
  EXPECT_EQ(Column(*connection, others, "Name"), Texts{"ann"});
}

TEST_F(KeptRows, AreReadAgainWhenAPrefetchFindsThemStale) {
  const Statement friendly("SELECT FriendlyName FROM Calendars");
  Column(*Open(), friendly, "FriendlyName");
  const Shown kept = Keep();
  AddAsOtherProgram("bob");
  const auto connection = Open();
  for (const Statement& query : {kNames, friendly, kNames}) connection->Prefetch(query);
  EXPECT_EQ(Show(*connection).Names, (Texts{"ann", "bob"}));
  EXPECT_EQ(Column(*connection, friendly, "FriendlyName").size(), 2U);
  AddAsOtherProgram("cleo");
  EXPECT_EQ(Show(*connection).Names, (Texts{"ann", "bob"}));
}

TEST_F(KeptRows, AreForgottenByANewConnection) {
  const auto idle = Open();
  const Shown kept = Keep();
  const auto other = Open();
  const auto opened = Open();
  for (Connection* connection : {idle.get(), other.get(), opened.get()})
    EXPECT_NE(Show(*connection).Place, kept.Place);
}

}  // namespace
}  // namespace orlune::postgresql
