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

/// A store whose clock the test moves, for the pages "/a.asp" and "/b.asp".
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
  SessionStore& Store() override { return store_; }
  std::int64_t Count() override { return SessionTable(database_.OpenedBy(*driver_)).Count(); }

 private:
  SessionTestDatabase database_;
  std::unique_ptr<BreakableDriver> driver_ = database_.NewDriver();
  DatabaseSessionStore store_{
      {{"/a.asp", database_.OpenedBy(*driver_)}, {"/b.asp", database_.OpenedBy(*driver_)}},
      kLifetime,
      [this] { return std::chrono::system_clock::time_point(Elapsed); }};
};

struct StoreKind {
  const char* Name;
  std::function<std::unique_ptr<TestedStore>()> Make;
};

class PageSessions : public ::testing::TestWithParam<StoreKind> {
 protected:
  PageSession Request(const std::string& id, std::string_view page = "/a.asp") {
    return {tested_->Store(), page, {id}};
  }
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
  EXPECT_EQ(Request(id).Get("Calendar"), "team");
}

TEST_P(PageSessions, KeepNothingThatWasNotSaved) {
  const std::string id = LoggedIn();
  PageSession session = Request(id);
  session.Set("Login", "");
  session.Set("Calendar", "team");
  EXPECT_EQ(session.NewIdentifier(), std::nullopt);
  EXPECT_EQ(Request(id).Get("Login"), "ann");
  EXPECT_EQ(tested_->Count(), 1);
}

TEST_P(PageSessions, GetAnotherIdentifierWhenTheLoginChanges) {
  const std::string first = LoggedIn();
  EXPECT_EQ(Set(first, "Calendar", "team"), "(none)");
  EXPECT_EQ(Set(first, "Login", "ann"), "(none)");
  const std::string second = Set(first, "Login", "bob");
  EXPECT_NE(second, first);
  EXPECT_EQ(Request(first).Get("Login"), "");
  EXPECT_EQ(Request(second).Get("Login"), "bob");
  EXPECT_EQ(Request(second).Get("Calendar"), "team");
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
  EXPECT_EQ(Request(old).Get("Login"), "");
  EXPECT_EQ(Request(*again.NewIdentifier()).Get("Login"), "ann");
  EXPECT_EQ(tested_->Count(), 1);
}

TEST_P(PageSessions, StayWithTheirPage) {
  const std::string id = LoggedIn();
  EXPECT_EQ(Request(id, "/b.asp").Get("Login"), "");
  PageSession other(tested_->Store(), "/a.asp", {"stale", std::string_view(), std::string(32, 'f'), id});
  EXPECT_EQ(other.Get("Login"), "ann");
}

TEST_P(PageSessions, LookForAFewPossibleIdentifiersOnly) {
  const std::string id = LoggedIn();
  const std::string unknown(32, '0');
  PageSession afterThree(tested_->Store(), "/a.asp", {unknown, unknown, unknown, id});
  EXPECT_EQ(afterThree.Get("Login"), "ann");
  PageSession afterFour(tested_->Store(), "/a.asp", {unknown, unknown, unknown, unknown, id});
  EXPECT_EQ(afterFour.Get("Login"), "");
}

TEST_P(PageSessions, KeepTextsExactly) {
  const std::string texts[] = {
      "a&b=c%41+d", "'; DELETE FROM Sessions; --", "\xC3\x84\xE2\x82\xAC\xF0\x9F\x98\x80", " \r\n\t", "Null",
      "*1"};
  const std::string id = LoggedIn();
  for (const std::string& text : texts) {
    Set(id, "Calendar", text);
    EXPECT_EQ(Request(id).Get("Calendar"), text);
    Set(id, text, "x");
    EXPECT_EQ(Request(id).Get(text), "x") << text;
  }
  Set(id, "Calendar", std::string(1'000'000, 'x'));
  EXPECT_EQ(Request(id).Get("Calendar"), "*1");
  EXPECT_EQ(Request(id).Get("Login"), "ann");
}

TEST_P(PageSessions, JoinWhatRequestsChangeAtTheSameTime) {
  const std::string id = LoggedIn();
  Set(id, "Calendar", "old");
  PageSession one = Request(id);
  PageSession other = Request(id);
  one.Set("Calendar", "team");
  one.Set("DisplayMode", "week");
  other.Set("DisplayMode", "day");
  other.Set("CurrentDate", "3/15/2004");
  other.Save();
  one.Save();
  PageSession joined = Request(id);
  EXPECT_EQ(joined.Get("Login"), "ann");
  EXPECT_EQ(joined.Get("Calendar"), "team");
  EXPECT_EQ(joined.Get("CurrentDate"), "3/15/2004");
  EXPECT_EQ(joined.Get("DisplayMode"), "week");
}

TEST_P(PageSessions, ThatWereEndedStayEnded) {
  const std::string id = LoggedIn();
  PageSession slow = Request(id);
  slow.Set("Calendar", "team");
  Set(id, "Login", "");
  slow.Save();
  EXPECT_EQ(slow.NewIdentifier(), std::nullopt) << "the cookie may be another login's by now";
  EXPECT_EQ(Request(id).Get("Login"), "");
  EXPECT_EQ(Request(id).Get("Calendar"), "");
  EXPECT_EQ(tested_->Count(), 0);
}

TEST_P(PageSessions, ExpireAfterResting) {
  const std::string used = LoggedIn();
  const std::string rested = LoggedIn();
  for (int i = 0; i < 3; ++i) {
    tested_->Elapsed += minutes(53);
    EXPECT_EQ(Request(used).Get("Login"), "ann");
  }
  EXPECT_EQ(Request(rested).Get("Login"), "");
  tested_->Elapsed += kLifetime;
  EXPECT_EQ(Request(used).Get("Login"), "");
}

INSTANTIATE_TEST_SUITE_P(
    Kept, PageSessions,
    ::testing::Values(StoreKind{"InMemory", [] { return std::make_unique<TestedMemory>(); }},
                      StoreKind{"InADatabase", [] { return std::make_unique<TestedDatabase>(); }}),
    [](const auto& kind) { return kind.param.Name; });

TEST(MemorySessions, AreSweptAndBoundedInNumber) {
  std::chrono::steady_clock::time_point now;
  MemorySessionStore store(kLifetime, 1600, [&now] { return now; });
  NamedTexts values;
  values.Set("Login", "ann");
  for (int i = 0; i < 3000; ++i) store.Start("/a.asp", values, "");
  EXPECT_LE(store.size(), 1600U);
  now += kLifetime;
  for (int i = 0; i < 100; ++i) store.Start("/a.asp", values, "");
  EXPECT_LE(store.size(), 100U);
}

}  // namespace
}  // namespace orlune::testing
