#include "sessions/database_session_store.h"

#include <sstream>
#include <thread>

#include <gtest/gtest.h>
#include <spdlog/sinks/ostream_sink.h>

#include "sessions/page_session.h"
#include "sessions/session_cleaner.h"
#include "sessions/session_database.h"
#include "store/statement.h"

namespace orlune::testing {
namespace {

using std::chrono::minutes, std::chrono::seconds, std::chrono::system_clock;

/// A server of the database: its own driver, and a store for one page.
struct ServerOfSessions {
  ServerOfSessions(const SessionTestDatabase& database, const seconds& elapsed, std::string page = "/a.asp")
      : Driver(database.NewDriver()),
        Database(database.OpenedBy(*Driver)),
        Store(Database, Prolonger, std::move(page), minutes(60),
              [&elapsed] { return system_clock::time_point(elapsed); }) {}
  PageSession Request(std::string_view id) { return {Store, {id}}; }
  std::string Login(std::string_view id) { return Request(id).Get("Login"); }
  std::string LogIn() {
    PageSession session = Request("");
    session.Set("Login", "ann");
    session.Save();
    return session.NewIdentifier().value();
  }

  std::unique_ptr<BreakableDriver> Driver;
  SessionDatabase Database;
  SessionProlonger Prolonger{Database};
  DatabaseSessionStore Store;
};

class DatabaseSessions : public ::testing::Test {
 protected:
  using Minutes = std::vector<std::int64_t>;

  /// Runs `act` with the number and a server of its own in each of four threads, until all are done.
  template <class Act>
  void OnFourServers(Act act) {
    std::vector<std::jthread> threads;
    for (int i = 0; i < 4; ++i) {
      threads.emplace_back([this, i, act] {
        ServerOfSessions server(database_, elapsed_);
        act(i, server);
      });
    }
  }
  SessionCleaner Cleaner(CleaningRules rules = {}) {
    return {{first_.Database, first_.Database}, log_, rules, [this] {
              return system_clock::time_point(elapsed_);
            }};
  }
  /// When the sessions expire.
  Minutes Expiries() {
    const auto connection = first_.Driver->Open(first_.Database.Path);
    const auto rows = connection->Query(Statement("SELECT Expires FROM Sessions ORDER BY Expires"));
    Minutes expiries;
    while (rows->Next()) expiries.push_back(std::get<std::int64_t>(rows->Get(0)) / 60);
    return expiries;
  }

  seconds elapsed_{0};
  std::ostringstream logText_;
  spdlog::logger log_{"test", std::make_shared<spdlog::sinks::ostream_sink_mt>(logText_)};
  SessionTestDatabase database_;
  ServerOfSessions first_{database_, elapsed_};
};

TEST_F(DatabaseSessions, AreSharedByTheServersOfAPageOnly) {
  std::string id;
  {
    ServerOfSessions second(database_, elapsed_);
    id = second.LogIn();
    EXPECT_EQ(first_.Login(id), "ann");
  }
  ServerOfSessions otherPage(database_, elapsed_, "/b.asp");
  EXPECT_EQ(otherPage.Login(id), "");
  ServerOfSessions third(database_, elapsed_);
  third.Store.End(id);
  EXPECT_EQ(first_.Login(id), "");
}

TEST_F(DatabaseSessions, BeginOnManyNewServersAtOnce) {
  std::array<std::string, 4> ids;
  OnFourServers(
      [&ids](int i, ServerOfSessions& server) { ids[static_cast<std::size_t>(i)] = server.LogIn(); });
  for (const std::string& id : ids) EXPECT_EQ(first_.Login(id), "ann");
}

TEST_F(DatabaseSessions, AreStoredWithoutTheirIdentifiers) {
  const std::string id = first_.LogIn();
  const auto connection = first_.Driver->Open(first_.Database.Path);
  const auto rows = connection->Query(Statement("SELECT SessionKey, SessionValues FROM Sessions"));
  ASSERT_TRUE(rows->Next());
  const std::string key(std::get<std::string_view>(rows->Get(0)));
  EXPECT_EQ(key.size(), 64U);
  EXPECT_EQ(key.find(id), std::string::npos);
  EXPECT_EQ(std::get<std::string_view>(rows->Get(1)), "Login=ann");
  EXPECT_FALSE(rows->Next());
  EXPECT_EQ(first_.Login(key.substr(0, 32)), "");
}

TEST_F(DatabaseSessions, WriteANewLifetimeOnlyNowAndThen) {
  const std::string id = first_.LogIn();
  const std::pair<int, std::int64_t> cases[] = {{0, 60},  {6, 60},   {7, 67},   {13, 67},
                                                {14, 74}, {73, 133}, {133, 133}};
  for (const auto& [minute, expiry] : cases) {
    elapsed_ = minutes(minute);
    EXPECT_EQ(ServerOfSessions(database_, elapsed_).Login(id), minute < 133 ? "ann" : "") << minute;
    EXPECT_EQ(Expiries(), Minutes{expiry}) << minute;
  }
}

TEST_F(DatabaseSessions, LoseNoChangeOfManyAtOnce) {
  constexpr int kChanges = 25;
  const std::string id = first_.LogIn();
  OnFourServers([&id](int i, ServerOfSessions& server) {
    for (int change = 0; change < kChanges; ++change) {
      PageSession session = server.Request(id);
      session.Set("Key" + std::to_string(i) + "." + std::to_string(change), "set");
      session.Save();
    }
  });
  const std::string_view candidates[] = {id};
  EXPECT_EQ(first_.Store.Find(candidates)->Values.size(), 1U + 4 * kChanges);
}

TEST_F(DatabaseSessions, AreNotMistakenForEndedOnesWhileTheDatabaseIsAway) {
  const std::string id = first_.LogIn();
  PageSession begun = first_.Request(id);
  begun.Set("Login", "bob");
  first_.Driver->IsAway = true;
  EXPECT_THROW(begun.Save(), DatabaseError);
  EXPECT_EQ(begun.NewIdentifier(), std::nullopt);

  PageSession session = first_.Request(id);
  EXPECT_THROW(session.Get("Login"), DatabaseError);
  EXPECT_THROW(session.Set("Login", ""), DatabaseError);
  session.Save();
  EXPECT_EQ(session.NewIdentifier(), std::nullopt);
  EXPECT_EQ(first_.Login("no identifier"), "");
  first_.Driver->IsAway = false;
  EXPECT_EQ(first_.Login(id), "ann");
}

TEST_F(DatabaseSessions, AreRemovedOnceTheyHaveExpired) {
  SessionCleaner cleaner = Cleaner();
  cleaner.CleanUp();
  first_.LogIn();
  elapsed_ = minutes(30);
  const std::string id = first_.LogIn();
  elapsed_ = minutes(60);
  EXPECT_EQ(Expiries(), (Minutes{60, 90}));
  cleaner.CleanUp();
  EXPECT_EQ(Expiries(), Minutes{90});
  EXPECT_EQ(first_.Login(id), "ann");

  first_.Driver->IsAway = true;
  cleaner.CleanUp();
  const std::string failure = "cannot remove expired sessions: away";
  const std::size_t found = logText_.str().find(failure);
  EXPECT_NE(found, std::string::npos);
  EXPECT_EQ(logText_.str().find(failure, found + 1), std::string::npos) << "one round for two pages";
}

TEST_F(DatabaseSessions, AreBoundedInNumber) {
  first_.LogIn();
  const auto connection = first_.Driver->Open(first_.Database.Path);
  connection->Begin();
  for (int i = 0; i < 1500; ++i)
    connection->Execute(
        Statement("INSERT INTO Sessions (SessionKey, Expires, Login) VALUES ('{}', {}, 'user{}')", i,
                  minutes(100 + i / 100) / seconds(1), i));
  for (int i = 0; i < 400; ++i)
    connection->Execute(Statement("INSERT INTO Sessions (SessionKey, Expires) VALUES ('{}', {})", i,
                                  minutes(200) / seconds(1) + i));
  connection->Commit();
  SessionCleaner cleaner = Cleaner({.MaxSessions = 1500});
  for (int round = 0; round < 2; ++round) {
    cleaner.CleanUp();
    EXPECT_EQ(Expiries().size(), 500U) << "and none that nobody logged in to";
    EXPECT_EQ(Expiries().front(), 110);
  }
  EXPECT_NE(logText_.str().find("session limit exceeded by 1;"), std::string::npos);
}

TEST_F(DatabaseSessions, AreCleanedUpByAThreadThatEndsAtOnce) {
  first_.LogIn();
  elapsed_ = minutes(60);
  {
    SessionCleaner cleaner = Cleaner({.Pause = seconds(1)});
    cleaner.Start();
    while (!Expiries().empty()) std::this_thread::yield();
  }
  SessionCleaner paused = Cleaner({.Pause = std::chrono::hours(10)});
  paused.Start();
}

}  // namespace
}  // namespace orlune::testing
