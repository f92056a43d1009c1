#include "app/secret_key_file.h"

#include <gtest/gtest.h>

#include "base/configuration_error.h"
#include "support/temporary_folder.h"
#include "support/write_file.h"

namespace orlune::testing {
namespace {

namespace fs = std::filesystem;

TEST(SecretKeyFile, IsCreatedOnceForItsOwnerOnly) {
  const TemporaryFolder folder;
  const fs::path file = folder.Path() / "var" / "secret.key";
  const SecretKey created = LoadSecretKey(file);
  EXPECT_NE(created, SecretKey());
  EXPECT_EQ(LoadSecretKey(file), created);
  EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST(SecretKeyFile, IsRefusedWhenItHoldsNoKey) {
  const TemporaryFolder folder;
  const fs::path tooShort = WriteFile(folder.Path() / "short", std::string(31, 'x'));
  const fs::path tooLong = WriteFile(folder.Path() / "long", std::string(33, 'x'));
  for (const fs::path& file : {tooShort, tooLong, folder.Path(), tooShort / "below"})
    EXPECT_THROW(LoadSecretKey(file), ConfigurationError) << file;
}

}  // namespace
}  // namespace orlune::testing
