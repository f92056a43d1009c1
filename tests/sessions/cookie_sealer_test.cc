#include "sessions/cookie_sealer.h"

#include <fstream>

#include <gtest/gtest.h>

#include "base/configuration_error.h"
#include "support/temporary_folder.h"
#include "support/write_file.h"

namespace orlune::testing {
namespace {

namespace fs = std::filesystem;

constexpr Date kToday{std::chrono::days(12'000)};

CookieContents Contents(std::optional<Date> expires) {
  CookieContents contents{{}, expires};
  contents.SubKeys.Set("Login", "j\xC3\xB6rg & co");
  contents.SubKeys.Set("CurrentDate", "3/15/2004");
  return contents;
}

TEST(CookieSealer, OpensWhatItSealed) {
  const CookieSealer sealer(SecretKey{7});
  const std::string sealed = sealer.Seal(Contents(std::nullopt), "OLOR", "/a.asp");
  EXPECT_EQ(sealed.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-"),
            std::string::npos);
  const auto opened = sealer.Open(sealed, "OLOR", "/a.asp", kToday);
  ASSERT_TRUE(opened);
  EXPECT_EQ(opened->SubKeys.Find("Login"), "j\xC3\xB6rg & co");
  EXPECT_EQ(opened->SubKeys.Find("CurrentDate"), "3/15/2004");
  EXPECT_NE(sealed, sealer.Seal(Contents(std::nullopt), "OLOR", "/a.asp"));
}

TEST(CookieSealer, ExpiresWhenItsDayBegins) {
  const CookieSealer sealer(SecretKey{7});
  const std::string sealed = sealer.Seal(Contents(kToday + std::chrono::days(1)), "OLOR", "/a.asp");
  EXPECT_TRUE(sealer.Open(sealed, "OLOR", "/a.asp", kToday));
  EXPECT_FALSE(sealer.Open(sealed, "OLOR", "/a.asp", kToday + std::chrono::days(1)));
}

TEST(CookieSealer, RefusesForeignAndChangedCookies) {
  const CookieSealer sealer(SecretKey{7});
  const std::string sealed = sealer.Seal(Contents(std::nullopt), "OLOR", "/a.asp");
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

TEST(SecretKeyFile, IsMadeOnceForItsOwnerAlone) {
  const TemporaryFolder folder;
  const fs::path file = folder.Path() / "var" / "secret.key";
  const SecretKey made = LoadSecretKey(file);
  EXPECT_NE(made, SecretKey());
  EXPECT_EQ(LoadSecretKey(file), made);
  EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST(SecretKeyFile, IsRefusedWhenItHoldsNoKey) {
  const TemporaryFolder folder;
  EXPECT_THROW(LoadSecretKey(WriteFile(folder.Path() / "short", std::string(31, 'x'))), ConfigurationError);
  EXPECT_THROW(LoadSecretKey(WriteFile(folder.Path() / "long", std::string(33, 'x'))), ConfigurationError);
  EXPECT_THROW(LoadSecretKey(folder.Path()), ConfigurationError);
  EXPECT_THROW(LoadSecretKey(folder.Path() / "short" / "below"), ConfigurationError);
}

}  // namespace
}  // namespace orlune::testing
