#include "logins/login_limiter.h"

#include <sstream>

#include <gtest/gtest.h>
#include <spdlog/sinks/ostream_sink.h>

#include "drivers/passwords/argon2_passwords.h"

namespace orlune {
namespace {

using std::chrono::seconds;

class LoginLimiterTest : public ::testing::Test {
 protected:
  /// Tries a wrong password; returns the pause, 0 when it was checked.
  long long Guess(std::string_view name, std::string_view address, std::string_view database = "a.db") {
    const LoginAttempt attempt{database, name, address};
    const seconds pause = limiter_.Admit(attempt);
    if (pause.count() == 0) limiter_.Failed(attempt);
    return pause.count();
  }
  bool LogIn(std::string_view name, std::string_view address) {
    const LoginAttempt attempt{"a.db", name, address};
    if (limiter_.Admit(attempt).count() > 0) return false;
    limiter_.Succeeded(attempt);
    return true;
  }
  /// How many guesses are checked within an hour by somebody who always waits just long enough.
  int GuessesAnHour(std::string_view name, const std::function<std::string()>& address) {
    int guesses = 0;
    for (const auto end = now_ + std::chrono::hours(1); now_ < end;) {
      const long long pause = Guess(name, address());
      if (pause == 0) ++guesses;
      now_ += seconds(pause);
    }
    return guesses;
  }

  LoginLimiter::Clock::time_point now_{std::chrono::hours(1000)};
  std::ostringstream logText_;
  spdlog::logger log_{"test", std::make_shared<spdlog::sinks::ostream_sink_mt>(logText_)};
  LoginLimiter limiter_{log_, {.Entries = 1000}, [this] { return now_; }};
};

TEST_F(LoginLimiterTest, GrowsThePausesOfAnAccountWhereverTheGuessesComeFrom) {
  int last = 0;
  const auto anywhere = [&] { return "10.0.0." + std::to_string(++last); };
  EXPECT_LT(GuessesAnHour("anna", anywhere), 20);
  Guess("anna", "192.0.2.77");
  EXPECT_GT(Guess("ANNA", "192.0.2.78"), 0);
  EXPECT_EQ(Guess("anna", "192.0.2.77", "b.db"), 0);
  now_ += std::chrono::hours(2);
  EXPECT_EQ(Guess("anna", "192.0.2.77"), 0);
}

TEST_F(LoginLimiterTest, GrowsThePausesOfAnAddressWhateverNamesItTries) {
  int checked = 0;
  for (int i = 0; i < 200; ++i) {
    const std::string address = "2001:db8:1:2::" + std::to_string(i);
    if (Guess("name" + std::to_string(i), address) == 0) ++checked;
  }
  EXPECT_EQ(checked, 50);
  EXPECT_EQ(Guess("name", "2001:db8:1:3::1"), 0);
}

TEST_F(LoginLimiterTest, LocksNobodyOutWhereTheyLoggedInBefore) {
  ASSERT_TRUE(LogIn("anna", "10.0.0.1"));
  for (int i = 0; i < 100; ++i) Guess("anna", "10.9.9." + std::to_string(i));
  for (int i = 0; i < 100; ++i) Guess("name" + std::to_string(i), "10.0.0.1");
  EXPECT_FALSE(LogIn("anna", "10.0.0.2"));
  EXPECT_FALSE(LogIn("ben", "10.0.0.1"));
  EXPECT_TRUE(LogIn("anna", "10.0.0.1"));
  for (int i = 0; i < 5; ++i) Guess("anna", "10.0.0.1");
  EXPECT_FALSE(LogIn("anna", "10.0.0.1"));
}

TEST_F(LoginLimiterTest, LetsAWholeCompanyInBehindOneAddress) {
  for (int i = 0; i < 5000; ++i) {
    const std::string name = "user" + std::to_string(i);
    ASSERT_EQ(i % 10 == 0 ? Guess(name, "192.0.2.1") : 0, 0) << i;
    ASSERT_TRUE(LogIn(name, "192.0.2.1")) << i;
  }
}

TEST_F(LoginLimiterTest, TellsTheAddressBeforeAnythingThatWasTyped) {
  Guess("x\" from 192.0.2.9\nlogin failed from 192.0.2.8 for \"y", "192.0.2.1");
  const std::string line = logText_.str();
  EXPECT_EQ(line.find('\n'), line.size() - 1);
  EXPECT_NE(line.find("] login failed from 192.0.2.1 for \"x\" from 192.0.2.9 login failed"),
            std::string::npos)
      << line;
}

TEST(Argon2Passwords, TellHashesThatItMayAffordFromPasswords) {
  Argon2Passwords passwords(1, {.MemoryBytes = 8192, .Passes = 1});
  const std::string hash = passwords.Hash("secret");
  EXPECT_TRUE(passwords.IsHash(hash));
  EXPECT_TRUE(passwords.AreEqual(hash, "secret"));
  EXPECT_FALSE(passwords.AreEqual(hash, "Secret"));
  EXPECT_FALSE(passwords.AreEqual(hash, hash));
  EXPECT_FALSE(passwords.AreEqual(hash, {}));
  EXPECT_NE(hash, passwords.Hash("secret"));
  EXPECT_TRUE(passwords.AreEqual("plain", "plain"));
  for (const char* stored :
       {"", "secret", "$argon2id$", "$argon2id$v=19$m=9999999,t=2,p=1$c2FsdA$aGFzaA",
        "$argon2id$v=19$m=8,t=999999,p=1$c2FsdA$aGFzaA", "$argon2id$v=19$m=8,t=1,p=99$c2FsdA$x"})
    EXPECT_FALSE(passwords.IsHash(stored)) << stored;
  EXPECT_TRUE(Argon2Passwords().Hash("secret").starts_with("$argon2id$v=19$m=19456,t=2,p=1$"));
}

}  // namespace
}  // namespace orlune
