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

constexpr const char* kPage = "/a.asp";

/// A server of the database: its own driver and store.
struct ServerOfSessions {
  ServerOfSessions(const SessionTestDatabase& database, const seconds& elapsed)
      : Driver(database.NewDriver()),
        Database(database.OpenedBy(*Driver)),
        Store({{kPage, Database}}, minutes(60), [&elapsed] { return system_clock::time_point(elapsed); }) {}

  std::unique_ptr<BreakableDriver> Driver;
  SessionDatabase Database;
  DatabaseSessionStore Store;
};

class DatabaseSessions : public ::testing::Test {
 protected:
  static PageSession Request(ServerOfSessions& server, std::string_view id) {
    return {server.Store, kPage, {id}};
  }
  static std::string Get(ServerOfSessions& server, std::string_view id, std::string_view key) {
    return Request(server, id).Get(key);
  }
  static std::string LogIn(ServerOfSessions& server) {
    PageSession session = Request(server, "");
    session.Set("Login", "ann");
    session.Save();
    return session.NewIdentifier().value();
  }
  SessionCleaner Cleaner(CleaningRules rules = {}) {
    return {{{kPage, first_.Database}, {"/b.asp", first_.Database}}, log_, rules, [this] {
              return system_clock::time_point(elapsed_);
            }};
  }
  /// The moments of expiry of all sessions, in minutes.
  std::vector<std::int64_t> Expiries() {
    const auto connection = first_.Driver->Open(first_.Database.Path);
    const auto rows = connection->Query(Statement("SELECT Expires FROM Sessions ORDER BY Expires"));
    std::vector<std::int64_t> expiries;
    while (rows->Next()) expiries.push_back(std::get<std::int64_t>(rows->Get(0)) / 60);
    return expiries;
  }

  seconds elapsed_{0};
  std::ostringstream logText_;
  spdlog::logger log_{"test", std::make_shared<spdlog::sinks::ostream_sink_mt>(logText_)};
  SessionTestDatabase database_;
  ServerOfSessions first_{database_, elapsed_};
};

TEST_F(DatabaseSessions, AreSharedByServersAndOutliveThem) {
  auto second = std::make_unique<ServerOfSessions>(database_, elapsed_);
  const std::string id = LogIn(*second);
  EXPECT_EQ(Get(first_, id, "Login"), "ann");
  second = nullptr;
  ServerOfSessions third(database_, elapsed_);
  EXPECT_EQ(Get(third, id, "Login"), "ann");
  third.Store.End(kPage, id);
  EXPECT_EQ(Get(first_, id, "Login"), "");
}

TEST_F(DatabaseSessions, BeginOnManyNewServersAtOnce) {
  constexpr int kServers = 4;
  std::vector<std::string> ids(kServers);
  {
    std::vector<std::jthread> threads;
    threads.reserve(kServers);
    for (std::string& id : ids) {
      threads.emplace_back([this, &id] {
        ServerOfSessions server(database_, elapsed_);
        id = LogIn(server);
      });
    }
  }
  for (const std::string& id : ids) EXPECT_EQ(Get(first_, id, "Login"), "ann");
}

TEST_F(DatabaseSessions, TellNobodyTheirIdentifiers) {
  const std::string id = LogIn(first_);
  const auto connection = first_.Driver->Open(first_.Database.Path);
  const auto rows = connection->Query(Statement("SELECT SessionKey, SessionValues FROM Sessions"));
  ASSERT_TRUE(rows->Next());
  const std::string key(std::get<std::string_view>(rows->Get(0)));
  EXPECT_EQ(key.size(), 64U);
  EXPECT_EQ(key.find(id), std::string::npos);
  EXPECT_EQ(std::get<std::string_view>(rows->Get(1)), "Login=ann");
  EXPECT_FALSE(rows->Next());
  EXPECT_EQ(Get(first_, key, "Login"), "");
  EXPECT_EQ(Get(first_, key.substr(0, 32), "Login"), "");
}

TEST_F(DatabaseSessions, WriteANewLifetimeOnlyNowAndThen) {
  const std::string id = LogIn(first_);
  const struct {
    int Minute;
    std::int64_t Expiry;
  } cases[] = {{0, 60}, {6, 60}, {7, 67}, {13, 67}, {14, 74}, {73, 133}, {133, 133}};
  for (const auto& c : cases) {
    elapsed_ = minutes(c.Minute);
    EXPECT_EQ(Get(first_, id, "Login"), c.Minute < 133 ? "ann" : "") << c.Minute;
    EXPECT_EQ(Expiries(), std::vector<std::int64_t>{c.Expiry}) << c.Minute;
  }
}

TEST_F(DatabaseSessions, LoseNoChangeOfManyAtOnce) {
  constexpr int kServers = 4;
  constexpr int kChanges = 25;
  const std::string id = LogIn(first_);
  std::vector<std::jthread> threads;
  threads.reserve(kServers);
  for (int i = 0; i < kServers; ++i) {
    threads.emplace_back([this, i, &id] {
      ServerOfSessions server(database_, elapsed_);
      for (int change = 0; change < kChanges; ++change) {
        PageSession session = Request(server, id);
        session.Set("Key" + std::to_string(i) + "." + std::to_string(change), "set");
        session.Save();
      }
    });
  }
  threads.clear();
  const std::string_view candidates[] = {id};
  EXPECT_EQ(first_.Store.Find(kPage, candidates)->Values.size(), 1U + kServers * kChanges);
}

TEST_F(DatabaseSessions, AreNotMistakenForEndedOnesWhileTheDatabaseIsAway) {
  const std::string id = LogIn(first_);
  PageSession begun = Request(first_, id);
  begun.Set("Login", "bob");
  first_.Driver->IsAway = true;
  EXPECT_THROW(begun.Save(), DatabaseError);
  EXPECT_EQ(begun.NewIdentifier(), std::nullopt);

  PageSession session = Request(first_, id);
  EXPECT_THROW(session.Get("Login"), DatabaseError);
  EXPECT_THROW(session.Set("Login", ""), DatabaseError);
  session.Save();
  EXPECT_EQ(session.NewIdentifier(), std::nullopt);
  EXPECT_EQ(Request(first_, "no identifier").Get("Login"), "");
  first_.Driver->IsAway = false;
  EXPECT_EQ(Get(first_, id, "Login"), "ann");
}

TEST_F(DatabaseSessions, AreRemovedOnceTheyHaveExpired) {
  SessionCleaner cleaner = Cleaner();
  cleaner.CleanUp();
  LogIn(first_);
  elapsed_ = minutes(30);
  const std::string id = LogIn(first_);
  elapsed_ = minutes(60);
  EXPECT_EQ(Expiries(), (std::vector<std::int64_t>{60, 90}));
  cleaner.CleanUp();
  EXPECT_EQ(Expiries(), std::vector<std::int64_t>{90});
  EXPECT_EQ(Get(first_, id, "Login"), "ann");

  first_.Driver->IsAway = true;
  cleaner.CleanUp();
  EXPECT_NE(logText_.str().find("cannot remove expired sessions: away"), std::string::npos);
}

TEST_F(DatabaseSessions, AreBoundedInNumber) {
  LogIn(first_);
  const auto connection = first_.Driver->Open(first_.Database.Path);
  connection->Begin();
  for (int i = 0; i < 1500; ++i)
    connection->Execute(Statement("INSERT INTO Sessions (SessionKey, Expires) VALUES ('{}', {})", i,
                                  minutes(100 + i / 100) / seconds(1)));
  connection->Commit();
  SessionCleaner cleaner = Cleaner({.MostSessions = 1500});
  for (int round = 0; round < 2; ++round) {
    cleaner.CleanUp();
    EXPECT_EQ(Expiries().size(), 500U);
    EXPECT_EQ(Expiries().front(), 110);
  }
  EXPECT_NE(logText_.str().find("1 sessions too many"), std::string::npos);
}

TEST_F(DatabaseSessions, AreCleanedUpByAThreadThatEndsAtOnce) {
  LogIn(first_);
  elapsed_ = minutes(60);
  {
    SessionCleaner cleaner = Cleaner({.Pause = seconds(1)});
    cleaner.Start();
    while (!Expiries().empty()) std::this_thread::yield();
  }
  SessionCleaner resting = Cleaner({.Pause = std::chrono::hours(10)});
  resting.Start();
}

}  // namespace
}  // namespace orlune::testing
