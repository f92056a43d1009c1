#include "app/configuration.h"

#include <gtest/gtest.h>

#include "support/temporary_folder.h"
#include "support/write_file.h"

namespace orlune::testing {
namespace {

namespace fs = std::filesystem;

constexpr const char* kPage = "[[page]]\npath = \"/a.asp\"\nDBPath = \"var/a.db\"\n";

class ConfigurationFile : public ::testing::Test {
 protected:
  ConfigurationFile() { fs::create_directory(folder_.Path() / "site"); }

  Configuration Load(std::string_view text) {
    Configuration configuration = LoadConfiguration(WriteFile(file_, text));
    CheckConfiguration(configuration);
    return configuration;
  }
  std::string Complaint(std::string_view text) {
    try {
      Load(text);
      return "no complaint";
    } catch (const ConfigurationError& error) {
      return error.what();
    }
  }

  TemporaryFolder folder_;
  fs::path file_ = folder_.Path() / "orlune.toml";
};

TEST_F(ConfigurationFile, ReadsEverySetting) {
  fs::create_directory(folder_.Path() / "web");
  const Configuration configuration = Load(
      "[server]\nlisten = \"[::1]:81\"\nsite = \"web\"\nregion = \"fi_FI\"\nsession_minutes = "
      "5\nsession_store = \"database\"\nthreads = "
      "3\n"
      "secret_file = \"/run/orlune.key\"\ntrusted_proxies = [\"10.0.0.0/8\", \"::1\"]\ndrain_seconds = 7\n"
      "[[page]]\npath = \"/a.asp\"\nDBPath = \"../a.db\"\nLoginName = \"\"\nShowTitle = true\nUseCookie = "
      "false\n"
      "[[page]]\npath = \"/team/b.asp\"\nregion = \"sv_SE\"\nDBPath = \"/b.db\"\nExpireCookie = "
      "\"3/15/2034\"\n");
  EXPECT_EQ(configuration.Listen, "[::1]:81");
  EXPECT_EQ(configuration.Site, folder_.Path() / "web");
  EXPECT_EQ(configuration.Region, "fi_FI");
  EXPECT_EQ(configuration.SessionMinutes, 5);
  EXPECT_TRUE(configuration.StoresSessions);
  EXPECT_EQ(configuration.Threads, 3);
  EXPECT_EQ(configuration.SecretFile, "/run/orlune.key");
  ASSERT_EQ(configuration.TrustedProxies.size(), 2U);
  EXPECT_TRUE(configuration.TrustedProxies[0].Contains(IpAddress::Parse("10.1.2.3").value()));
  EXPECT_EQ(configuration.DrainSeconds, 7);
  ASSERT_EQ(configuration.Pages.size(), 2U);
  EXPECT_EQ(AddressOf(configuration, configuration.Pages[0]).Target(), folder_.Path().parent_path() / "a.db");
  EXPECT_EQ(configuration.Pages[0].DBPath, "../a.db");
  ASSERT_EQ(configuration.Pages[0].Properties.size(), 3U);
  for (const PropertyValue& value : configuration.Pages[0].Properties) {
    const bool isText = std::holds_alternative<std::string>(value.Value);
    EXPECT_EQ(isText, value.Property->Name == "LoginName") << value.Property->Name;
    EXPECT_EQ(value.Property->Name == "ShowTitle", !isText && std::get<bool>(value.Value));
  }
  EXPECT_EQ(configuration.Pages[0].Region, "");
  EXPECT_EQ(configuration.Pages[1].Path, "/team/b.asp");
  EXPECT_EQ(configuration.Pages[1].Region, "sv_SE");
  EXPECT_EQ(AddressOf(configuration, configuration.Pages[1]).Target(), "/b.db");
}

TEST_F(ConfigurationFile, NeedsOnlyAPage) {
  const Configuration configuration = Load(kPage);
  EXPECT_EQ(configuration.Listen, "127.0.0.1:8080");
  EXPECT_EQ(configuration.Site, folder_.Path() / "site");
  EXPECT_EQ(configuration.Region, "en_US");
  EXPECT_EQ(configuration.SessionMinutes, 60);
  EXPECT_TRUE(configuration.TrustedProxies.empty());
  EXPECT_EQ(configuration.DrainSeconds, 0);
  EXPECT_FALSE(configuration.StoresSessions);
  EXPECT_FALSE(Load(std::string("[server]\nsession_store = \"memory\"\n") + kPage).StoresSessions);
}

TEST_F(ConfigurationFile, TakesEveryProperty) {
  std::string text = kPage;
  for (const PageProperty& property : PageProperties()) {
    if (property.Name == "DBPath") continue;
    const bool isSwitch = std::holds_alternative<PageProperty::SwitchSetter>(property.Set);
    text.append(property.Name).append(isSwitch ? " = true\n" : " = \"x\"\n");
  }
  EXPECT_EQ(Load(text).Pages[0].Properties.size(), 16U);
}

TEST_F(ConfigurationFile, IsRefusedWithFileLineAndKey) {
  const std::string page = kPage;
  const struct {
    std::string Text;
    const char* Line;
    const char* Complaint;
  } cases[] = {
      {"[server]\nport = 1\n" + page, "2", "port: unknown key in [server]; expected one of listen, site"},
      {"x = 1\n" + page, "1", "x: unknown key; expected [server] or [[page]]"},
      {page + "Showtitle = true\n", "4",
       "Showtitle: unknown key in [[page]]; expected path, region or one of LoginName"},
      {"[server]\nlisten = 8080\n" + page, "2", "listen: expected a text"},
      {"[server]\nthreads = \"4\"\n" + page, "2", "threads: expected a whole number from 0 to 512"},
      {"[server]\nsession_minutes = 0\n" + page, "2", "session_minutes: expected a whole number from 1"},
      {"[server]\nsession_minutes = 1.5\n" + page, "2", "session_minutes: expected a whole number"},
      {"[server]\nsession_store = \"Database\"\n" + page, "2",
       "session_store: expected \"memory\" or \"database\""},
      {"[server]\nsession_store = true\n" + page, "2", "session_store: expected a text"},
      {"[server]\nsite = \"\"\n" + page, "2", "site: expected a path"},
      {"[server]\ntrusted_proxies = \"::1\"\n" + page, "2", "trusted_proxies: expected a list of texts"},
      {"[server]\ntrusted_proxies = [1]\n" + page, "2", "trusted_proxies: expected a text"},
      {"[server]\ntrusted_proxies = [\"::1\",\n\"10.0.0.1/8\"]\n" + page, "3",
       "trusted_proxies: expected an address or network such as \"127.0.0.1\" or \"10.0.0.0/8\", not \"10.0"},
      {page + "ShowTitle = 1\n", "4", "ShowTitle: expected true or false"},
      {page + "CalName = true\n", "4", "CalName: expected a text"},
      {page + "DBPath = 1\n", "4", ""},
      {"server = 1\n" + page, "1", "server: expected a table"},
      {"[page]\npath = \"/a.asp\"\n", "1", "page: expected tables, each begun with [[page]]"},
      {"page = [1]\n", "1", "page: expected tables"},
      {"[[page]]\nDBPath = \"a\"\n", "1", "path: expected the page's address"},
      {"[[page]]\npath = \"a.asp\"\n", "2", "path: expected a path that begins with \"/\""},
      {"[[page]]\npath = \"/a;b\"\n", "2", "path: expected a path that begins with \"/\""},
      {"[[page]]\npath = \"//a\"\n", "2", "path: expected a path that begins with \"/\""},
      {"[[page]]\npath = \"/a/../b\"\n", "2", "path: expected a path without . and .."},
      {"[[page]]\npath = \"/a/.\"\n", "2", "path: expected a path without . and .."},
      {"[[page]]\npath = \"/..\"\n", "2", "path: expected a path without . and .."},
      {"[[page]]\npath = \"/healthz\"\n", "2", "path: expected another path"},
      {page + page, "5", "path: expected a path that no other page has, not /a.asp"},
      {page + "ShowTitle = \n", "4", ""},
      {page + "HTMLHeader = \"\\u0000\"\n", "4", "HTMLHeader: expected a text without NUL"},
  };
  for (const auto& c : cases) {
    const std::string expected = file_.string() + ", line " + c.Line + ": " + c.Complaint;
    EXPECT_EQ(Complaint(c.Text).substr(0, expected.size()), expected) << c.Text;
  }
}

TEST_F(ConfigurationFile, IsRefusedWhenItCannotBeServed) {
  const std::string page = kPage;
  const struct {
    std::string Text;
    std::string Complaint;
  } cases[] = {
      {"", "expected at least one [[page]]"},
      {"[server]\nsite = \"missing\"\n" + page,
       "site folder " + (folder_.Path() / "missing").string() + " is missing"},
      {"[server]\nlisten = \"localhost\"\n" + page, "cannot listen at \"localhost\""},
      {"[server]\nsecret_file = \"site/key\"\n" + page, "site/key would be served to everybody"},
      {"[[page]]\npath = \"/a\"\nDBPath = \"site/data/a.db\"\n",
       "site/data/a.db would be served to everybody"},
      {"[[page]]\npath = \"/a\"\n", "page /a has no DBPath"},
  };
  for (const auto& c : cases)
    EXPECT_NE(Complaint(c.Text).find(c.Complaint), std::string::npos) << Complaint(c.Text);
  EXPECT_THROW(LoadConfiguration(folder_.Path() / "none.toml"), ConfigurationError);
  EXPECT_THROW(LoadConfiguration(folder_.Path()), ConfigurationError);
}

}  // namespace
}  // namespace orlune::testing
