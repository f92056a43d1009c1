#include "app/configuration.h"

#include <algorithm>
#include <iomanip>
#include <span>
#include <sstream>
#include <string_view>

#include <toml++/toml.h>

#include "http/listening_socket.h"
#include "platform/database.h"

namespace orlune {
namespace {

namespace fs = std::filesystem;

using TextMember = std::string Configuration::*;
using PathMember = fs::path Configuration::*;
using NetworksMember = std::vector<IpNetwork> Configuration::*;

struct NumberMember {
  long long Configuration::*Member;
  long long Least;
  long long Most;
};

/// One of two words, which stand for false and true.
struct WordMember {
  bool Configuration::*Member;
  std::string_view False;
  std::string_view True;
};

struct ServerSetting {
  std::string_view Name;
  std::variant<TextMember, PathMember, NetworksMember, NumberMember, WordMember> Target;
  std::string_view Default;
  std::string_view Help;
};

constexpr ServerSetting kServerSettings[] = {
    {"listen", &Configuration::Listen, "\"127.0.0.1:8080\"", "numeric address and port"},
    {"site", &Configuration::Site, "\"site\"", "folder served beside the pages"},
    {"region", &Configuration::Region, "\"en_US\"", "how dates are written"},
    {"session_minutes", NumberMember{&Configuration::SessionMinutes, 1, 525'600}, "60",
     "how long a login rests"},
    {"session_store", WordMember{&Configuration::StoresSessions, "memory", "database"}, "\"memory\"",
     "where logins are kept: \"memory\" or \"database\""},
    {"threads", NumberMember{&Configuration::Threads, 0, 512}, "0", "0: chosen from the processors"},
    {"database_connections", NumberMember{&Configuration::DatabaseConnections, 0, 1000}, "0",
     "most connections to a database server, for each region; 0: as many as threads need"},
    {"secret_file", &Configuration::SecretFile, "\"var/secret.key\"",
     "key of sealed cookies; made when missing"},
    {"trusted_proxies", &Configuration::TrustedProxies, "[]", "addresses and networks of proxies in front"},
    {"drain_seconds", NumberMember{&Configuration::DrainSeconds, 0, 3600}, "0",
     "from the signal to stop to the stop"},
};

template <class Setting, std::size_t extent>
std::string NamesOf(std::span<Setting, extent> settings) {
  std::string names;
  for (const auto& setting : settings) names.append(names.empty() ? "" : ", ").append(setting.Name);
  return names;
}

/// The file under reading: says where something is wrong, and reads relative paths from the file's own
/// folder.
class Reader {
 public:
  explicit Reader(const fs::path& file) : file_(file), folder_(fs::absolute(file).parent_path()) {}

  Configuration Read(const toml::table& root);

 private:
  [[noreturn]] void Refuse(const toml::source_region& where, std::string_view key,
                           std::string_view complaint) const;
  std::string Text(std::string_view key, const toml::node& node) const;
  bool Switch(std::string_view key, const toml::node& node) const;
  long long Number(std::string_view key, const toml::node& node, const NumberMember& bounds) const;
  std::string Path(std::string_view key, const toml::node& node) const;
  std::vector<IpNetwork> Networks(std::string_view key, const toml::node& node) const;
  bool Word(std::string_view key, const toml::node& node, const WordMember& words) const;

  void ReadServer(const toml::node& node);
  void ReadServerSetting(const ServerSetting& setting, const toml::node& node);
  void ReadPages(const toml::node& node);
  PageConfiguration ReadPage(const toml::table& table) const;
  void ReadPageKey(PageConfiguration& page, std::string_view key, const toml::source_region& where,
                   const toml::node& node) const;
  std::string PagePath(const toml::node& node) const;

  fs::path file_;
  fs::path folder_;
  Configuration result_;
};

void Reader::Refuse(const toml::source_region& where, std::string_view key,
                    std::string_view complaint) const {
  std::ostringstream text;
  text << file_.string() << ", line " << where.begin.line << ": " << key << ": " << complaint;
  throw ConfigurationError(text.str());
}

std::string Reader::Text(std::string_view key, const toml::node& node) const {
  if (!node.is_string()) Refuse(node.source(), key, "expected a text");
  std::string text = node.as_string()->get();
  if (text.find('\0') != std::string::npos) Refuse(node.source(), key, "expected a text without NUL");
  return text;
}

bool Reader::Switch(std::string_view key, const toml::node& node) const {
  if (!node.is_boolean()) Refuse(node.source(), key, "expected true or false");
  return node.as_boolean()->get();
}

long long Reader::Number(std::string_view key, const toml::node& node, const NumberMember& bounds) const {
  const auto* number = node.as_integer();
  if (number == nullptr || number->get() < bounds.Least || number->get() > bounds.Most)
    Refuse(node.source(), key,
           "expected a whole number from " + std::to_string(bounds.Least) + " to " +
               std::to_string(bounds.Most));
  return number->get();
}

std::string Reader::Path(std::string_view key, const toml::node& node) const {
  const std::string text = Text(key, node);
  if (text.empty()) Refuse(node.source(), key, "expected a path");
  return (folder_ / text).lexically_normal().string();
}

std::vector<IpNetwork> Reader::Networks(std::string_view key, const toml::node& node) const {
  if (!node.is_array()) Refuse(node.source(), key, "expected a list of texts");
  std::vector<IpNetwork> networks;
  for (const toml::node& item : *node.as_array()) {
    const std::string text = Text(key, item);
    const auto network = IpNetwork::Parse(text);
    if (!network)
      Refuse(item.source(), key,
             "expected an address or network such as \"127.0.0.1\" or \"10.0.0.0/8\", not \"" + text + "\"");
    networks.push_back(*network);
  }
  return networks;
}

bool Reader::Word(std::string_view key, const toml::node& node, const WordMember& words) const {
  const std::string text = Text(key, node);
  if (text != words.False && text != words.True)
    Refuse(node.source(), key,
           "expected \"" + std::string(words.False) + "\" or \"" + std::string(words.True) + '"');
  return text == words.True;
}

Configuration Reader::Read(const toml::table& root) {
  result_.DatabaseFolder = folder_;
  result_.Site = folder_ / result_.Site;
  result_.SecretFile = folder_ / result_.SecretFile;
  for (const auto& [key, node] : root) {
    if (key == "server") {
      ReadServer(node);
    } else if (key == "page") {
      ReadPages(node);
    } else {
      Refuse(key.source(), key.str(), "unknown key; expected [server] or [[page]]");
    }
  }
  if (result_.Pages.empty()) throw ConfigurationError(file_.string() + ": expected at least one [[page]]");
  return std::move(result_);
}

void Reader::ReadServer(const toml::node& node) {
  if (!node.is_table()) Refuse(node.source(), "server", "expected a table, [server]");
  for (const auto& [key, value] : *node.as_table()) {
    const auto* setting =
        std::find_if(std::begin(kServerSettings), std::end(kServerSettings),
                     [name = key.str()](const ServerSetting& known) { return known.Name == name; });
    if (setting == std::end(kServerSettings))
      Refuse(key.source(), key.str(),
             "unknown key in [server]; expected one of " + NamesOf(std::span(kServerSettings)));
    ReadServerSetting(*setting, value);
  }
}

void Reader::ReadServerSetting(const ServerSetting& setting, const toml::node& node) {
  if (const auto* text = std::get_if<TextMember>(&setting.Target)) {
    result_.** text = Text(setting.Name, node);
  } else if (const auto* path = std::get_if<PathMember>(&setting.Target)) {
    result_.** path = Path(setting.Name, node);
  } else if (const auto* networks = std::get_if<NetworksMember>(&setting.Target)) {
    result_.** networks = Networks(setting.Name, node);
  } else if (const auto* words = std::get_if<WordMember>(&setting.Target)) {
    result_.*words->Member = Word(setting.Name, node, *words);
  } else {
    const NumberMember& number = std::get<NumberMember>(setting.Target);
    result_.*number.Member = Number(setting.Name, node, number);
  }
}

void Reader::ReadPages(const toml::node& node) {
  const toml::array* pages = node.as_array();
  if (pages == nullptr || !pages->is_homogeneous(toml::node_type::table))
    Refuse(node.source(), "page", "expected tables, each begun with [[page]]");
  for (const toml::node& page : *pages) {
    result_.Pages.push_back(ReadPage(*page.as_table()));
    const std::string& path = result_.Pages.back().Path;
    if (std::count_if(result_.Pages.begin(), result_.Pages.end(),
                      [&path](const PageConfiguration& known) { return known.Path == path; }) > 1)
      Refuse(page.as_table()->get("path")->source(), "path",
             "expected a path that no other page has, not " + path);
  }
}

PageConfiguration Reader::ReadPage(const toml::table& table) const {
  PageConfiguration page;
  for (const auto& [key, node] : table) ReadPageKey(page, key.str(), key.source(), node);
  if (page.Path.empty())
    Refuse(table.source(), "path", "expected the page's address, such as path = \"/OLOrlune.asp\"");
  return page;
}

void Reader::ReadPageKey(PageConfiguration& page, std::string_view key, const toml::source_region& where,
                         const toml::node& node) const {
  if (key == "path") {
    page.Path = PagePath(node);
    return;
  }
  if (key == "region") {
    page.Region = Text(key, node);
    return;
  }
  const auto properties = PageProperties();
  const auto property = std::find_if(properties.begin(), properties.end(),
                                     [key](const PageProperty& known) { return known.Name == key; });
  if (property == properties.end())
    Refuse(where, key, "unknown key in [[page]]; expected path, region or one of " + NamesOf(properties));
  if (key == "DBPath") {
    page.DBPath = Text(key, node);
    if (page.DBPath.empty()) Refuse(node.source(), key, "expected a path");
  } else if (std::holds_alternative<PageProperty::SwitchSetter>(property->Set)) {
    page.Properties.push_back({&*property, Switch(key, node)});
  } else {
    page.Properties.push_back({&*property, Text(key, node)});
  }
}

std::string Reader::PagePath(const toml::node& node) const {
  constexpr std::string_view kAllowed = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789/._~-";
  std::string path = Text("path", node);
  if (!path.starts_with('/') || path.starts_with("//") ||
      path.find_first_not_of(kAllowed) != std::string::npos)
    Refuse(node.source(), "path",
           "expected a path that begins with \"/\" and holds letters, digits and / . _ ~ - only");
  if (const fs::path names(path); std::any_of(
          names.begin(), names.end(), [](const fs::path& name) { return name == "." || name == ".."; }))
    Refuse(node.source(), "path", "expected a path without . and .. between its slashes");
  if (path == "/healthz")
    Refuse(node.source(), "path", "expected another path than /healthz, which tells the server's health");
  return path;
}

bool IsBelow(const fs::path& file, const fs::path& folder) {
  const fs::path relative = fs::weakly_canonical(file).lexically_relative(fs::weakly_canonical(folder));
  return !relative.empty() && *relative.begin() != "..";
}

std::string_view TypeOf(const ServerSetting& setting) {
  if (std::holds_alternative<NumberMember>(setting.Target)) return "number";
  return std::holds_alternative<NetworksMember>(setting.Target) ? "list of texts" : "text";
}

template <class Setting>
void Describe(std::ostringstream& text, const Setting& setting, std::string_view type) {
  text << "  " << std::left << std::setw(21) << setting.Name << std::setw(15) << type << setting.Help
       << " (default " << setting.Default << ")\n";
}

}  // namespace

Configuration LoadConfiguration(const fs::path& file) {
  try {
    if (!fs::is_regular_file(file)) throw ConfigurationError("cannot read configuration " + file.string());
    return Reader(file).Read(toml::parse_file(file.string()));
  } catch (const toml::parse_error& error) {
    throw ConfigurationError(file.string() + ", line " + std::to_string(error.source().begin.line) + ": " +
                             std::string(error.description()));
  }
}

void CheckConfiguration(const Configuration& configuration) {
  CheckListenAddress(configuration.Listen);
  if (!fs::is_directory(configuration.Site))
    throw ConfigurationError("site folder " + configuration.Site.string() + " is missing");
  const auto refuseBelowSite = [&configuration](const fs::path& file) {
    if (IsBelow(file, configuration.Site))
      throw ConfigurationError(file.string() +
                               " would be served to everybody: move it out of the site folder");
  };
  refuseBelowSite(configuration.SecretFile);
  for (const PageConfiguration& page : configuration.Pages) {
    if (const DatabaseAddress address = AddressOf(configuration, page); address.IsFile())
      refuseBelowSite(address.Target());
  }
}

DatabaseAddress AddressOf(const Configuration& configuration, const PageConfiguration& page) {
  if (page.DBPath.empty()) throw ConfigurationError("page " + page.Path + " has no DBPath");
  try {
    return DatabaseAddress::Parse(page.DBPath, configuration.DatabaseFolder);
  } catch (const DatabaseError& error) {
    throw ConfigurationError("DBPath of page " + page.Path + ": " + error.what());
  }
}

std::string DescribeSettings() {
  std::ostringstream text;
  text << "Configuration file (TOML)\n[server]\n";
  for (const ServerSetting& setting : kServerSettings) Describe(text, setting, TypeOf(setting));
  text << "[[page]]\n";
  Describe(text, ServerSetting{"path", {}, "none", "the page's address, begins with \"/\""}, "text");
  Describe(text, ServerSetting{"region", {}, "the server's", "how the page's dates are written"}, "text");
  for (const PageProperty& property : PageProperties())
    Describe(text, property,
             std::holds_alternative<PageProperty::SwitchSetter>(property.Set) ? "true or false" : "text");
  return text.str();
}

}  // namespace orlune
