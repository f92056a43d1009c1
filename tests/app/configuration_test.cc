#include <map>

#include <gtest/gtest.h>

#include "app/configuration_reader.h"
#include "app/site_version_names.h"
#include "support/temporary_folder.h"
#include "support/write_file.h"

namespace orlune::testing {
namespace {

namespace fs = std::filesystem;

const std::string kPage = "[[page]]\npath = \"/a.asp\"\nDBPath = \"var/a.db\"\n";

class ConfigurationFile : public ::testing::Test {
 protected:
  ConfigurationFile() { fs::create_directory(folder_.Path() / "site"); }

  Configuration Load(const std::string& text) {
    Configuration configuration = LoadConfiguration(WriteFile(file_, text));
    CheckConfiguration(configuration);
    return configuration;
  }
  std::string Complaint(const std::string& text) {
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
  const Configuration configuration = Load(R"(
[server]
listen = "[::1]:81"
site = "web"
compress = true
join_style_sheets = true
region = "fi_FI"
session_minutes = 5
session_store = "database"
threads = 3
secret_file = "/run/orlune.key"
trusted_proxies = ["10.0.0.0/8", "::1"]
drain_seconds = 7
allowed_hosts = ["calendar.example.org", "[::1]"]
content_security_policy = "default-src 'self' https://cdn.example.org"
database_connections = 9
connections = 20
connections_per_address = 10
reserved_connections = 2
reply_megabytes = 3
certificate = "c.pem"
key = "/etc/c.key"
redirect_listen = "[::]:80"
hsts_seconds = 4
[[page]]
path = "/a.asp"
DBPath = "../a.db"
LoginName = ""
ShowTitle = true
UseCookie = false
[[page]]
path = "/team/b.asp"
region = "sv_SE"
DBPath = "/b.db"
)");
  EXPECT_EQ(configuration.Listen, "[::1]:81");
  EXPECT_EQ(configuration.Site, folder_.Path() / "web");
  EXPECT_TRUE(configuration.Compresses && configuration.JoinsStyleSheets);
  EXPECT_EQ(configuration.Region, "fi_FI");
  EXPECT_EQ(configuration.SessionMinutes, 5);
  EXPECT_TRUE(configuration.StoresSessions);
  EXPECT_EQ(configuration.Threads, 3);
  EXPECT_EQ(configuration.SecretFile, "/run/orlune.key");
  ASSERT_EQ(configuration.TrustedProxies.size(), 2U);
  EXPECT_TRUE(configuration.TrustedProxies[0].Contains(IpAddress::Parse("10.1.2.3").value()));
  EXPECT_EQ(configuration.DrainSeconds, 7);
  EXPECT_EQ(configuration.AllowedHosts, (std::vector<std::string>{"calendar.example.org", "[::1]"}));
  EXPECT_EQ(configuration.ContentSecurityPolicy, "default-src 'self' https://cdn.example.org");
  EXPECT_EQ(configuration.DatabaseConnections, 9);
  EXPECT_EQ(configuration.Connections, 20);
  EXPECT_EQ(configuration.ConnectionsPerAddress, 10);
  EXPECT_EQ(configuration.ReservedConnections, 2);
  EXPECT_EQ(configuration.ReplyMegabytes, 3);
  EXPECT_EQ(configuration.Certificate, folder_.Path() / "c.pem");
  EXPECT_EQ(configuration.Key, "/etc/c.key");
  EXPECT_EQ(configuration.RedirectListen, "[::]:80");
  EXPECT_EQ(configuration.HstsSeconds, 4);
  ASSERT_EQ(configuration.Pages.size(), 2U);
  const PageConfiguration& first = configuration.Pages[0];
  const PageConfiguration& second = configuration.Pages[1];
  EXPECT_EQ(AddressOf(configuration, first).Target(), folder_.Path().parent_path() / "a.db");
  EXPECT_EQ(AddressOf(configuration, second).Target(), "/b.db");
  EXPECT_EQ(first.DBPath, "../a.db");
  EXPECT_EQ(first.Region + second.Region, "sv_SE");
  EXPECT_EQ(second.Path, "/team/b.asp");
  using Value = decltype(PropertyValue::Value);
  std::map<std::string_view, Value> properties;
  for (const PropertyValue& property : first.Properties) properties[property.Property->Name] = property.Value;
  EXPECT_EQ(properties, (std::map<std::string_view, Value>{
                            {"LoginName", std::string()}, {"ShowTitle", true}, {"UseCookie", false}}));
}

TEST_F(ConfigurationFile, NeedsOnlyAPage) {
  const Configuration configuration = Load(kPage);
  EXPECT_EQ(configuration.Site, folder_.Path() / "site");
  EXPECT_EQ(configuration.SecretFile, folder_.Path() / "var/secret.key");
  EXPECT_FALSE(configuration.StoresSessions || configuration.Compresses || configuration.JoinsStyleSheets);
  EXPECT_FALSE(Load("[server]\nsession_store = \"memory\"\n" + kPage).StoresSessions);
}

TEST_F(ConfigurationFile, AcceptsEveryProperty) {
  std::string text = kPage;
  for (const PageProperty& property : PageProperties()) {
    if (property.Name == "DBPath") continue;
    const bool isSwitch = std::holds_alternative<PageProperty::SwitchSetter>(property.Set);
    text.append(property.Name).append(isSwitch ? " = true\n" : " = \"x\"\n");
  }
  EXPECT_EQ(Load(text).Pages[0].Properties.size(), 19U);
}

TEST_F(ConfigurationFile, NamesTheVersionOfTheSiteFolderInLinks) {
  std::vector<PageConfiguration> pages =
      Load(kPage +
           "CssDir = \"{version}/css\"\nLanguage = \"{version}\"\n"
           "HeadData = \"{version} {version} {}\"\nImageDir = \"images\"\n")
          .Pages;
  StaticFiles files(folder_.Path() / "site");
  NameSiteVersion(pages, files);
  const std::string version = files.ReadVersion();
  std::string texts;
  for (const PropertyValue& property : pages[0].Properties)
    texts.append(property.Property->Name)
        .append("=")
        .append(std::get<std::string>(property.Value))
        .append(";");
  EXPECT_EQ(texts, "CssDir=" + version + "/css;HeadData=" + version + " " + version +
                       " {};ImageDir=images;Language={version};");
}

TEST_F(ConfigurationFile, IsRefusedWithFileLineAndKey) {
  const auto server = [](const std::string& line) { return "[server]\n" + line + "\n" + kPage; };
  const auto page = [](const std::string& line) { return kPage + line + "\n"; };
  const auto path = [](const std::string& value) { return "[[page]]\npath = \"" + value + "\"\n"; };
  const std::pair<std::string, const char*> cases[] = {
      {server("port = 1"), "2: port: unknown key in [server]; expected one of listen, site"},
      {"x = 1\n" + kPage, "1: x: unknown key; expected [server] or [[page]]"},
      {page("Showtitle = true"),
       "4: Showtitle: unknown key in [[page]]; expected path, region, sharing_with_login or one of "
       "LoginName"},
      {server("listen = 8080"), "2: listen: expected a text"},
      {server("threads = \"4\""), "2: threads: expected a whole number from 0 to 512"},
      {server("session_minutes = 0"), "2: session_minutes: expected a whole number from 1"},
      {server("session_minutes = 1.5"), "2: session_minutes: expected a whole number"},
      {server("session_store = \"Database\""), "2: session_store: expected \"memory\" or \"database\""},
      {server("session_store = true"), "2: session_store: expected a text"},
      {server("site = \"\""), "2: site: expected a path"},
      {server("trusted_proxies = \"::1\""), "2: trusted_proxies: expected a list of texts"},
      {server("allowed_hosts = [\"calendar.example.org:8080\"]"),
       "2: allowed_hosts: expected a name or address"},
      {server("content_security_policy = \"a\\nb\""), "2: content_security_policy: expected one line"},
      {server("trusted_proxies = [1]"), "2: trusted_proxies: expected a text"},
      {server("trusted_proxies = [\"::1\",\n\"10.0.0.1/8\"]"),
       "3: trusted_proxies: expected an address or network"},
      {server("compress = \"true\""), "2: compress: expected true or false"},
      {page("ShowTitle = 1"), "4: ShowTitle: expected true or false"},
      {page("CalName = true"), "4: CalName: expected a text"},
      {page("DBPath = 1"), "4: "},
      {page("ShowTitle = "), "4: "},
      {page("HTMLHeader = \"\\u0000\""), "4: HTMLHeader: expected a text without NUL"},
      {"server = 1\n" + kPage, "1: server: expected a table"},
      {"[page]\npath = \"/a.asp\"\n", "1: page: expected tables, each begun with [[page]]"},
      {"page = [1]\n", "1: page: expected tables"},
      {"[[page]]\nDBPath = \"a\"\n", "1: path: expected the page's address"},
      {path("a.asp"), "2: path: expected a path that begins with \"/\""},
      {path("/a;b"), "2: path: expected a path that begins with \"/\""},
      {path("//a"), "2: path: expected a path that begins with \"/\""},
      {path("/a/../b"), "2: path: expected a path without . and .."},
      {path("/a/."), "2: path: expected a path without . and .."},
      {path("/healthz"), "2: path: expected another path"},
      {kPage + kPage, "5: path: expected a path that no other page has, not /a.asp"}};
  for (const auto& [text, complaint] : cases) {
    const std::string expected = file_.string() + ", line " + complaint;
    EXPECT_EQ(Complaint(text).substr(0, expected.size()), expected) << text;
  }
}

TEST_F(ConfigurationFile, IsRefusedWhenItCannotBeServed) {
  const std::pair<std::string, std::string> cases[] = {
      {"", "expected at least one [[page]]"},
      {"[server]\nsite = \"missing\"\n" + kPage,
       "site folder " + (folder_.Path() / "missing").string() + " is missing"},
      {"[server]\nlisten = \"localhost\"\n" + kPage, "cannot listen at \"localhost\""},
      {"[server]\nsecret_file = \"site/key\"\n" + kPage, "site/key would be served to everybody"},
      {"[server]\ncertificate = \"c.pem\"\n" + kPage, "HTTPS needs both certificate and key"},
      {"[server]\nkey = \"site/c.key\"\ncertificate = \"c.pem\"\n" + kPage,
       "site/c.key would be served to everybody"},
      {"[server]\nredirect_listen = \"[::]:80\"\n" + kPage, "redirect_listen leads to HTTPS, which needs"},
      {"[[page]]\npath = \"/a\"\nDBPath = \"site/data/a.db\"\n",
       "site/data/a.db would be served to everybody"},
      {"[[page]]\npath = \"/a\"\n", "page /a has no DBPath"}};
  for (const auto& [text, complaint] : cases)
    EXPECT_NE(Complaint(text).find(complaint), std::string::npos) << Complaint(text);
  EXPECT_THROW(LoadConfiguration(folder_.Path() / "none.toml"), ConfigurationError);
  EXPECT_THROW(LoadConfiguration(folder_.Path()), ConfigurationError);
}

}  // namespace
}  // namespace orlune::testing
