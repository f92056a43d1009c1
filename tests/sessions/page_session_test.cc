#include "sessions/page_session.h"

#include <functional>

#include <gtest/gtest.h>

#include "sessions/database_session_store.h"
#include "sessions/memory_session_store.h"
#include "sessions/session_database.h"
#include "sessions/session_identifier.h"

namespace orlune::testing {
namespace {

using std::chrono::minutes, std::chrono::seconds;

constexpr seconds kLifetime = minutes(60);

/// The store of one page, whose clock the test moves.
class TestedStore {
 public:
  virtual ~TestedStore() = default;
  virtual SessionStore& Store() = 0;
  virtual std::int64_t Count() = 0;

  seconds Elapsed{0};
};

class TestedMemory : public TestedStore {
 public:
  SessionStore& Store() override { return store_; }
  std::int64_t Count() override { return static_cast<std::int64_t>(store_.size()); }

 private:
  MemorySessionStore store_{kLifetime, 1600,
                            [this] { return std::chrono::steady_clock::time_point(Elapsed); }};
};

class TestedDatabase : public TestedStore {
 public:
  /// Lifetimes that were restarted are written.
  SessionStore& Store() override {
    prolonger_.emplace(database_.OpenedBy(*driver_));
    return store_;
  }
  std::int64_t Count() override {
    SessionTable table(database_.OpenedBy(*driver_));
    return table.Count(SessionKind::kUsers) + table.Count(SessionKind::kAnonymous);
  }

 private:
  SessionTestDatabase database_;
  std::unique_ptr<BreakableDriver> driver_ = database_.NewDriver();
  std::optional<SessionProlonger> prolonger_{database_.OpenedBy(*driver_)};
  DatabaseSessionStore store_{database_.OpenedBy(*driver_), *prolonger_, "/a.asp", kLifetime,
                              [this] { return std::chrono::system_clock::time_point(Elapsed); }};
};

struct StoreKind {
  const char* Name;
  std::function<std::unique_ptr<TestedStore>()> Make;
};

class PageSessions : public ::testing::TestWithParam<StoreKind> {
 protected:
  PageSession Request(const std::string& id) { return {tested_->Store(), {id}}; }
  std::string Get(const std::string& id, std::string_view key = "Login") { return Request(id).Get(key); }
  /// One request that sets a value; the identifier that the browser is told, or "(none)".
  std::string Set(const std::string& id, std::string_view key, std::string_view value) {
    PageSession session = Request(id);
    session.Set(key, value);
    session.Save();
    return session.NewIdentifier().value_or("(none)");
  }
  std::string LoggedIn() { return Set("", "Login", "ann"); }

  std::unique_ptr<TestedStore> tested_ = GetParam().Make();
};

TEST_P(PageSessions, StartWithTheFirstValueOnly) {
  const std::string madeUp(32, 'a');
  EXPECT_EQ(Set(madeUp, "Login", ""), "(none)");
  EXPECT_EQ(tested_->Count(), 0);
  const std::string id = Set(madeUp, "Calendar", "team");
  EXPECT_TRUE(IsSessionIdentifier(id)) << id;
  EXPECT_NE(id, madeUp);
  EXPECT_EQ(Get(id, "Calendar"), "team");
}

TEST_P(PageSessions, GetAnotherIdentifierWhenTheLoginChanges) {
  const std::string first = LoggedIn();
  EXPECT_EQ(Set(first, "Calendar", "team"), "(none)");
  EXPECT_EQ(Set(first, "Login", "ann"), "(none)");
  const std::string second = Set(first, "Login", "bob");
  EXPECT_NE(second, first);
  EXPECT_EQ(Get(first), "");
  EXPECT_EQ(Get(second), "bob");
  EXPECT_EQ(Get(second, "Calendar"), "team");
  EXPECT_EQ(tested_->Count(), 1);
}

TEST_P(PageSessions, EndWithTheLastValue) {
  const std::string id = LoggedIn();
  EXPECT_EQ(Set(id, "Login", ""), "");
  EXPECT_EQ(tested_->Count(), 0);

  const std::string old = LoggedIn();
  PageSession again = Request(old);
  again.Set("Login", "");
  again.Set("Login", "ann");
  again.Save();
  EXPECT_NE(again.NewIdentifier().value(), old);
  EXPECT_EQ(Get(old), "");
  EXPECT_EQ(Get(*again.NewIdentifier()), "ann");
}

TEST_P(PageSessions, AreFoundByOneOfTheFirstFourWellFormedIdentifiers) {
  const std::string id = LoggedIn();
  const std::string unknown(32, '0');
  const std::vector<std::string_view> three{"stale", "", unknown, unknown, unknown, id};
  EXPECT_EQ(PageSession(tested_->Store(), three).Get("Login"), "ann");
  const std::vector<std::string_view> four{unknown, unknown, unknown, unknown, id};
  EXPECT_EQ(PageSession(tested_->Store(), four).Get("Login"), "");
}

TEST_P(PageSessions, KeepTextsExactly) {
  const std::string id = LoggedIn();
  for (const std::string text : {"a&b=c%41+d", "'; DELETE FROM Sessions; --",
                                 "\xC3\x84\xE2\x82\xAC\xF0\x9F\x98\x80", " \r\n\t", "Null", "*1"}) {
    Set(id, "Calendar", text);
    Set(id, text, "x");
    EXPECT_EQ(Get(id, "Calendar"), text);
    EXPECT_EQ(Get(id, text), "x") << text;
  }
  Set(id, "Calendar", std::string(1'000'000, 'x'));
  EXPECT_EQ(Get(id, "Calendar"), "*1");
}

TEST_P(PageSessions, JoinWhatRequestsChangeAtTheSameTime) {
  const std::string id = LoggedIn();
  PageSession one = Request(id);
  PageSession other = Request(id);
  one.Set("Calendar", "team");
  one.Set("DisplayMode", "week");
  other.Set("DisplayMode", "day");
  other.Set("CurrentDate", "3/15/2004");
  other.Save();
  one.Save();
  const PageSession joined = Request(id);
  for (const auto& [key, value] : {std::pair("Login", "ann"), std::pair("Calendar", "team"),
                                   std::pair("CurrentDate", "3/15/2004"), std::pair("DisplayMode", "week")})
    EXPECT_EQ(joined.Get(key), value) << key;
}

TEST_P(PageSessions, ThatWereEndedStayEnded) {
  const std::string id = LoggedIn();
  PageSession slow = Request(id);
  slow.Set("Calendar", "team");
  EXPECT_EQ(Get(id, "Calendar"), "") << "nothing is kept that was not saved";
  Set(id, "Login", "");
  slow.Save();
  EXPECT_EQ(slow.NewIdentifier(), std::nullopt) << "the cookie may be another login's by now";
  EXPECT_EQ(Get(id, "Calendar"), "");
  EXPECT_EQ(tested_->Count(), 0);
}

TEST_P(PageSessions, ExpireWhenTheyAreNotUsed) {
  const std::string used = LoggedIn();
  const std::string unused = LoggedIn();
  for (int i = 0; i < 3; ++i) {
    tested_->Elapsed += minutes(53);
    EXPECT_EQ(Get(used), "ann");
  }
  EXPECT_EQ(Get(unused), "");
  tested_->Elapsed += kLifetime;
  EXPECT_EQ(Get(used), "");
}

TEST_P(PageSessions, EndTheLeastRecentlyUsedOfAUserWhoHasTooMany) {
  const std::string bobs = Set("", "Login", "bob");
  const std::string first = LoggedIn();
  tested_->Elapsed += minutes(1);
  const std::string second = LoggedIn();
  tested_->Elapsed += minutes(1);
  for (std::size_t i = 2; i < kMaxSessionsOfLogin; ++i) LoggedIn();
  tested_->Elapsed += minutes(10);
  EXPECT_EQ(Get(first), "ann");
  LoggedIn();
  EXPECT_EQ(Get(first), "ann");
  EXPECT_EQ(Get(second), "");
  EXPECT_EQ(Get(bobs), "bob");
  EXPECT_EQ(tested_->Count(), static_cast<std::int64_t>(kMaxSessionsOfLogin) + 1);
}

INSTANTIATE_TEST_SUITE_P(
    Kept, PageSessions,
    ::testing::Values(StoreKind{"InMemory", [] { return std::make_unique<TestedMemory>(); }},
                      StoreKind{"InADatabase", [] { return std::make_unique<TestedDatabase>(); }}),
    [](const auto& kind) { return kind.param.Name; });

TEST(MemorySessions, AreBoundedInNumber) {
  std::chrono::steady_clock::time_point now;
  MemorySessionStore store(kLifetime, 1600, [&now] { return now; });
  const auto start = [&](std::string_view key, std::string_view value) {
    NamedTexts values;
    values.Set(key, value);
    return store.Start(values, "");
  };
  for (int i = 0; i < 3000; ++i) start("Login", "user" + std::to_string(i));
  EXPECT_EQ(store.size(), 1600U);
  const std::string last = start("Login", "ann");
  for (int i = 0; i < 3000; ++i) start("CurrentDate", "3/15/2004");
  EXPECT_EQ(store.size(), 2000U);
  const std::string_view candidates[] = {last};
  EXPECT_TRUE(store.Find(candidates));
  now += kLifetime;
  EXPECT_FALSE(store.Find(candidates));
  EXPECT_EQ(store.size(), 0U);
}

}  // namespace
}  // namespace orlune::testing
