#include <gtest/gtest.h>

#include "caldav/caldav_fixture.h"
#include "exchange/access_keys.h"
#include "exchange/change_log.h"

namespace orlune::testing {
namespace {

class CalDavLogin : public CalDavFixture {
 protected:
  unsigned StatusWith(const std::string& authorization, Access access = Access::kReadAndWrite) {
    authorization_ = authorization;
    return Ask({"OPTIONS", ""}, access).Status;
  }
};

/// The credentials in base64 (RFC 4648), whose padding nobody needs.
std::string Basic(const std::string& text) {
  constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string encoded = "Basic ";
  for (std::size_t bit = 0; bit < 8 * text.size(); bit += 6) {
    unsigned digit = 0;
    for (std::size_t i = bit; i < bit + 6; ++i)
      digit = 2 * digit +
              (i < 8 * text.size() ? static_cast<unsigned char>(text[i / 8]) >> (7 - i % 8) & 1U : 0U);
    encoded += kDigits[digit];
  }
  return encoded;
}

TEST_F(CalDavLogin, TakesTheUsersPasswordAndNoOther) {
  const struct {
    const char* Authorization;
    unsigned Status;
    const char* Attempts;
  } kCases[] = {
      {"", 401, ""},
      {"Bearer YW5uYTpzZWNyZXQ=", 401, ""},
      {"Basic YW5uYTpzZWNy!mV0", 401, ""},
      {"Basic YW5uYQ==", 401, ""},                                       // anna
      {"Basic YW5uYTpzZWNyZXQ=", 200, "anna admitted, anna succeeded"},  // anna:secret
      {"basic QU5OQTpzZWNyZXQ", 200, ""},                                // ANNA:secret, known by now
      {"Basic YW5uYTp3cm9uZw==", 401, "anna admitted, anna failed"},     // anna:wrong
      {"Basic YmVuOg==", 401, "ben admitted, ben failed"},               // ben has no password
      {"Basic bm9ib2R5Og==", 401, "nobody admitted, nobody failed"},
  };
  for (const auto& testCase : kCases) {
    logins_.Record.clear();
    EXPECT_EQ(StatusWith(testCase.Authorization), testCase.Status) << testCase.Authorization;
    EXPECT_EQ(logins_.Record, testCase.Attempts) << testCase.Authorization;
  }
  EXPECT_EQ(HeaderOf(Ask({"OPTIONS", ""}), "WWW-Authenticate"), "Basic realm=\"Orlune\", charset=\"UTF-8\"");
}

TEST_F(CalDavLogin, TakesAppPasswordsUntilTheyAreRevoked) {
  allowsLoginPassword_ = false;
  EXPECT_EQ(StatusWith(Basic("anna:secret")), 401U);
  const auto database = driver_.Open(databasePath_);
  const auto password = MakeAppPassword(*database, {secrets_, regional_, clock_.Now().Day}, "anna", "phone");
  EXPECT_EQ(StatusWith(Basic("Anna:" + *password)), 200U);
  EXPECT_EQ(StatusWith(Basic("ben:" + *password)), 401U);
  const auto stored = AppPasswordsOf(*database, "anna");
  ASSERT_EQ(stored.size(), 1U);
  EXPECT_EQ(stored[0].LastUsed, clock_.Now().Day);
  RevokeAppPassword(*database, "anna", stored[0].Id);
  EXPECT_EQ(StatusWith(Basic("Anna:" + *password)), 401U);
}

TEST_F(CalDavLogin, WaitsForNothingWhileOnlyReading) {
  const std::string anna = Basic("anna:secret");
  EXPECT_THROW(StatusWith(anna, Access::kRead), WriteRefused);
  EXPECT_EQ(logins_.Record, "");
  EXPECT_EQ(StatusWith(anna), 200U);
  EXPECT_EQ(StatusWith(anna, Access::kRead), 200U);
  EXPECT_THROW(StatusWith(Basic("anna:wrong"), Access::kRead), WriteRefused);
  Run(Statement("UPDATE Calendars SET Password = 'other' WHERE Name = 'anna'"));
  EXPECT_THROW(StatusWith(anna, Access::kRead), WriteRefused);
  EXPECT_EQ(StatusWith(anna), 401U);
}

TEST_F(CalDavLogin, IsHeldOffAfterWrongPasswords) {
  logins_.Pause = std::chrono::seconds(7);
  const ReplyMessage reply = Ask({"OPTIONS", ""});
  EXPECT_EQ(reply.Status, 429U);
  EXPECT_EQ(HeaderOf(reply, "Retry-After"), "7");
}

TEST_F(CalDavLogin, IsRefusedWhereOthersMayListen) {
  const struct {
    const char* Address;
    bool IsOverHttps;
    unsigned Status;
  } kCases[] = {
      {"192.0.2.1", true, 200}, {"192.0.2.1", false, 403}, {"127.0.0.5", false, 200}, {"::1", false, 200}};
  for (const auto& testCase : kCases) {
    sender_ = {*IpAddress::Parse(testCase.Address), testCase.IsOverHttps};
    EXPECT_EQ(Ask({"OPTIONS", ""}).Status, testCase.Status) << testCase.Address;
  }
}

}  // namespace
}  // namespace orlune::testing
