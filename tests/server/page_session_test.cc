#include "server/page_session.h"

#include <gtest/gtest.h>

namespace orlune::testing {
namespace {

using std::chrono::minutes;

class PageSessions : public ::testing::Test {
 protected:
  PageSession Request(const std::string& id, std::string_view page = "/a.asp") {
    return {store_, page, {id}};
  }
  std::string LoggedIn() {
    PageSession session = Request("");
    session.Set("Login", "ann");
    return session.NewIdentifier().value();
  }

  std::chrono::steady_clock::time_point now_;
  SessionStore store_{minutes(60), 1600, [this] { return now_; }};
};

TEST_F(PageSessions, StartWithTheFirstValueOnly) {
  PageSession session = Request("made-up");
  session.Set("Login", "");
  EXPECT_EQ(session.NewIdentifier(), std::nullopt);
  EXPECT_EQ(store_.size(), 0U);
  session.Set("Calendar", "team");
  EXPECT_EQ(session.NewIdentifier()->size(), 32U);
  EXPECT_NE(session.NewIdentifier(), "made-up");
  EXPECT_EQ(Request(*session.NewIdentifier()).Get("Calendar"), "team");
}

TEST_F(PageSessions, GetAnotherIdentifierWhenTheLoginChanges) {
  const std::string first = LoggedIn();
  PageSession session = Request(first);
  session.Set("Calendar", "team");
  session.Set("Login", "ann");
  EXPECT_EQ(session.NewIdentifier(), std::nullopt);
  session.Set("Login", "bob");
  const std::string second = session.NewIdentifier().value();
  EXPECT_NE(second, first);
  EXPECT_EQ(Request(first).Get("Login"), "");
  EXPECT_EQ(Request(second).Get("Login"), "bob");
  EXPECT_EQ(Request(second).Get("Calendar"), "team");
}

TEST_F(PageSessions, EndWithTheLastValue) {
  const std::string id = LoggedIn();
  PageSession session = Request(id);
  session.Set("Login", "");
  EXPECT_EQ(session.NewIdentifier(), "");
  EXPECT_EQ(store_.size(), 0U);
  session.Set("Login", "bob");
  EXPECT_NE(session.NewIdentifier(), id);
  EXPECT_EQ(Request(session.NewIdentifier().value()).Get("Login"), "bob");
}

TEST_F(PageSessions, StayWithTheirPage) {
  const std::string id = LoggedIn();
  EXPECT_EQ(Request(id, "/b.asp").Get("Login"), "");
  PageSession other(store_, "/a.asp", {"stale", id});
  EXPECT_EQ(other.Get("Login"), "ann");
}

TEST_F(PageSessions, ExpireAfterRestingAndAreSwept) {
  const std::string used = LoggedIn();
  for (int i = 0; i < 100; ++i) LoggedIn();
  now_ += minutes(59);
  EXPECT_EQ(Request(used).Get("Login"), "ann");
  now_ += minutes(59);
  EXPECT_EQ(Request(used).Get("Login"), "ann");
  for (int i = 0; i < 100; ++i) LoggedIn();
  EXPECT_LE(store_.size(), 101U);
  now_ += minutes(60);
  EXPECT_EQ(Request(used).Get("Login"), "");
}

TEST_F(PageSessions, AreBoundedInNumber) {
  for (int i = 0; i < 3000; ++i) LoggedIn();
  EXPECT_LE(store_.size(), 1600U);
  EXPECT_EQ(Request(LoggedIn()).Get("Login"), "ann");
}

}  // namespace
}  // namespace orlune::testing
