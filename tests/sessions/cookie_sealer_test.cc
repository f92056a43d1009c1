#include "sessions/cookie_sealer.h"

#include <gtest/gtest.h>

namespace orlune::testing {
namespace {

constexpr Date kToday{std::chrono::days(12'000)};
constexpr Date kTomorrow = kToday + std::chrono::days(1);

CookieContents Contents(std::optional<Date> expires = std::nullopt) {
  CookieContents contents{{}, expires};
  contents.SubKeys.Set("Login", "j\xC3\xB6rg & co");
  contents.SubKeys.Set("CurrentDate", "3/15/2004");
  return contents;
}

TEST(CookieSealer, OpensWhatItSealed) {
  const CookieSealer sealer(SecretKey{7});
  const std::string sealed = sealer.Seal(Contents(), "OLOR", "/a.asp");
  EXPECT_EQ(sealed.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-"),
            std::string::npos);
  const auto opened = sealer.Open(sealed, "OLOR", "/a.asp", kToday);
  ASSERT_TRUE(opened);
  EXPECT_EQ(opened->SubKeys.Find("Login"), "j\xC3\xB6rg & co");
  EXPECT_EQ(opened->SubKeys.Find("CurrentDate"), "3/15/2004");
  EXPECT_NE(sealed, sealer.Seal(Contents(), "OLOR", "/a.asp"));
}

TEST(CookieSealer, ExpiresWhenItsDayBegins) {
  const CookieSealer sealer(SecretKey{7});
  const std::string sealed = sealer.Seal(Contents(kTomorrow), "OLOR", "/a.asp");
  EXPECT_TRUE(sealer.Open(sealed, "OLOR", "/a.asp", kToday));
  EXPECT_FALSE(sealer.Open(sealed, "OLOR", "/a.asp", kTomorrow));
}

TEST(CookieSealer, RefusesForeignAndChangedCookies) {
  const CookieSealer sealer(SecretKey{7});
  const std::string sealed = sealer.Seal(Contents(), "OLOR", "/a.asp");
  EXPECT_FALSE(sealer.Open(sealed, "OLOR", "/b.asp", kToday));
  EXPECT_FALSE(sealer.Open(sealed, "OTHER", "/a.asp", kToday));
  EXPECT_FALSE(CookieSealer(SecretKey{8}).Open(sealed, "OLOR", "/a.asp", kToday));
  for (std::size_t i = 0; i < sealed.size(); ++i) {
    std::string changed = sealed;
    changed[i] = changed[i] == 'A' ? 'B' : 'A';
    EXPECT_FALSE(sealer.Open(changed, "OLOR", "/a.asp", kToday)) << "character " << i;
    EXPECT_FALSE(sealer.Open(sealed.substr(0, i), "OLOR", "/a.asp", kToday)) << "first " << i;
  }
}

}  // namespace
}  // namespace orlune::testing
