#include "app/configuration_reader.h"

#include <algorithm>
#include <span>
#include <string_view>

#include <fmt/format.h>
#include <toml++/toml.h>

#include "app/settings.h"

namespace orlune {
namespace {

namespace fs = std::filesystem;

template <class Setting, std::size_t extent>
std::string NamesOf(std::span<Setting, extent> settings) {
  std::string names;
  for (const auto& setting : settings) names.append(names.empty() ? "" : ", ").append(setting.Name);
  return names;
}

template <class Setting, std::size_t extent>
const Setting* FindSetting(std::span<Setting, extent> settings, std::string_view name) {
  const auto found = std::ranges::find(settings, name, &Setting::Name);
  return found == settings.end() ? nullptr : &*found;
}

/// Reads the values of one file and names the line of a wrong one.
class ValueReader {
 public:
  explicit ValueReader(const fs::path& file) : file_(file), folder_(fs::absolute(file).parent_path()) {}

  const fs::path& File() const { return file_; }
  const fs::path& Folder() const { return folder_; }

  [[noreturn]] void Refuse(const toml::source_region& where, std::string_view key,
                           std::string_view complaint) const {
    throw ConfigurationError(
        fmt::format("{}, line {}: {}: {}", file_.string(), where.begin.line, key, complaint));
  }

  std::string Text(std::string_view key, const toml::node& node) const;
  std::string Line(std::string_view key, const toml::node& node) const;
  bool Switch(std::string_view key, const toml::node& node) const;
  long long Number(std::string_view key, const toml::node& node, const NumberSetting& bounds) const;
  std::string Path(std::string_view key, const toml::node& node) const;
  std::vector<IpNetwork> Networks(std::string_view key, const toml::node& node) const;
  std::vector<std::string> Hosts(std::string_view key, const toml::node& node) const;
  bool Word(std::string_view key, const toml::node& node, const WordSetting& words) const;
  std::string PagePath(const toml::node& node) const;

 private:
  fs::path file_;
  fs::path folder_;
};

std::string ValueReader::Text(std::string_view key, const toml::node& node) const {
  if (!node.is_string()) Refuse(node.source(), key, "expected a text");
  std::string text = node.as_string()->get();
  if (text.find('\0') != std::string::npos) Refuse(node.source(), key, "expected a text without NUL");
  return text;
}

std::string ValueReader::Line(std::string_view key, const toml::node& node) const {
  std::string line = Text(key, node);
  if (std::ranges::any_of(line, [](char c) { return c < ' ' || c > '~'; }))
    Refuse(node.source(), key, "expected one line of ASCII");
  return line;
}

bool ValueReader::Switch(std::string_view key, const toml::node& node) const {
  if (!node.is_boolean()) Refuse(node.source(), key, "expected true or false");
  return node.as_boolean()->get();
}

long long ValueReader::Number(std::string_view key, const toml::node& node,
                              const NumberSetting& bounds) const {
  const auto* number = node.as_integer();
  if (number == nullptr || number->get() < bounds.Min || number->get() > bounds.Max)
    Refuse(node.source(), key, fmt::format("expected a whole number from {} to {}", bounds.Min, bounds.Max));
  return number->get();
}

std::string ValueReader::Path(std::string_view key, const toml::node& node) const {
  const std::string text = Text(key, node);
  if (text.empty()) Refuse(node.source(), key, "expected a path");
  return (folder_ / text).lexically_normal().string();
}

std::vector<IpNetwork> ValueReader::Networks(std::string_view key, const toml::node& node) const {
  if (!node.is_array()) Refuse(node.source(), key, "expected a list of texts");
  std::vector<IpNetwork> networks;
  for (const toml::node& item : *node.as_array()) {
    const std::string text = Text(key, item);
    const auto network = IpNetwork::Parse(text);
    if (!network)
      Refuse(item.source(), key,
             fmt::format("expected an address or network such as \"127.0.0.1\" or \"10.0.0.0/8\", not \"{}\"",
                         text));
    networks.push_back(*network);
  }
  return networks;
}

std::vector<std::string> ValueReader::Hosts(std::string_view key, const toml::node& node) const {
  if (!node.is_array()) Refuse(node.source(), key, "expected a list of texts");
  std::vector<std::string> hosts;
  for (const toml::node& item : *node.as_array()) {
    hosts.push_back(Text(key, item));
    const bool hasPort = !hosts.back().ends_with(']') && hosts.back().find(':') != std::string::npos;
    if (hosts.back().empty() || hasPort || hosts.back().find_first_of("/ *") != std::string::npos)
      Refuse(item.source(), key,
             fmt::format("expected a name or address without port, such as \"calendar.example.org\" or "
                         "\"[::1]\", not \"{}\"",
                         hosts.back()));
  }
  return hosts;
}

bool ValueReader::Word(std::string_view key, const toml::node& node, const WordSetting& words) const {
  const std::string text = Text(key, node);
  if (text != words.False && text != words.True)
    Refuse(node.source(), key, fmt::format("expected \"{}\" or \"{}\"", words.False, words.True));
  return text == words.True;
}

std::string ValueReader::PagePath(const toml::node& node) const {
  constexpr std::string_view kAllowed = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789/._~-";
  std::string path = Text("path", node);
  if (!path.starts_with('/') || path.starts_with("//") ||
      path.find_first_not_of(kAllowed) != std::string::npos)
    Refuse(node.source(), "path",
           "expected a path that begins with \"/\" and holds letters, digits and / . _ ~ - only");
  if (const fs::path names(path);
      std::ranges::any_of(names, [](const fs::path& name) { return name == "." || name == ".."; }))
    Refuse(node.source(), "path", "expected a path without . and .. between its slashes");
  if (path == "/healthz")
    Refuse(node.source(), "path", "expected another path than /healthz, which is the health check's");
  return path;
}

/// Puts the value of a key of [server] where the setting says.
struct ServerValue {
  const ValueReader& Values;
  std::string_view Key;
  const toml::node& Node;
  Configuration& Target;

  void operator()(ServerSetting::Text text) const { Target.*text = Values.Line(Key, Node); }
  void operator()(ServerSetting::Path path) const { Target.*path = Values.Path(Key, Node); }
  void operator()(ServerSetting::Hosts hosts) const { Target.*hosts = Values.Hosts(Key, Node); }
  void operator()(ServerSetting::Switch isOn) const { Target.*isOn = Values.Switch(Key, Node); }
  void operator()(ServerSetting::Networks networks) const { Target.*networks = Values.Networks(Key, Node); }
  void operator()(const NumberSetting& number) const {
    Target.*number.Member = Values.Number(Key, Node, number);
  }
  void operator()(const WordSetting& words) const { Target.*words.Member = Values.Word(Key, Node, words); }
};

void ReadServer(const ValueReader& values, const toml::node& node, Configuration& configuration) {
  if (!node.is_table()) values.Refuse(node.source(), "server", "expected a table, [server]");
  for (const auto& [key, value] : *node.as_table()) {
    const ServerSetting* setting = FindSetting(ServerSettings(), key.str());
    if (setting == nullptr)
      values.Refuse(key.source(), key.str(),
                    "unknown key in [server]; expected one of " + NamesOf(ServerSettings()));
    std::visit(ServerValue{values, key.str(), value, configuration}, setting->Target);
  }
}

void ReadPageProperty(const ValueReader& values, const toml::key& key, const toml::node& node,
                      PageConfiguration& page) {
  const PageProperty* property = FindSetting(PageProperties(), key.str());
  if (property == nullptr)
    values.Refuse(key.source(), key.str(),
                  fmt::format("unknown key in [[page]]; expected {} or one of {}", NamesOf(PageSettings()),
                              NamesOf(PageProperties())));
  if (key == "DBPath") {
    page.DBPath = values.Text(key.str(), node);
    if (page.DBPath.empty()) values.Refuse(node.source(), key.str(), "expected a path");
  } else if (std::holds_alternative<PageProperty::SwitchSetter>(property->Set)) {
    page.Properties.push_back({property, values.Switch(key.str(), node)});
  } else {
    page.Properties.push_back({property, values.Text(key.str(), node)});
  }
}

void ReadPageSetting(const ValueReader& values, const PageSetting& setting, const toml::node& node,
                     PageConfiguration& page) {
  if (const auto* isOn = std::get_if<PageSetting::Switch>(&setting.Target)) {
    page.** isOn = values.Switch(setting.Name, node);
  } else {
    page.*std::get<PageSetting::Text>(setting.Target) = values.Text(setting.Name, node);
  }
}

PageConfiguration ReadPage(const ValueReader& values, const toml::table& table) {
  PageConfiguration page;
  for (const auto& [key, node] : table) {
    if (key == "path") {
      page.Path = values.PagePath(node);
    } else if (const PageSetting* setting = FindSetting(PageSettings(), key.str())) {
      ReadPageSetting(values, *setting, node, page);
    } else {
      ReadPageProperty(values, key, node, page);
    }
  }
  if (page.Path.empty())
    values.Refuse(table.source(), "path", "expected the page's address, such as path = \"/OLOrlune.asp\"");
  return page;
}

void ReadPages(const ValueReader& values, const toml::node& node, std::vector<PageConfiguration>& pages) {
  const toml::array* tables = node.as_array();
  if (tables == nullptr || !tables->is_homogeneous(toml::node_type::table))
    values.Refuse(node.source(), "page", "expected tables, each begun with [[page]]");
  for (const toml::node& table : *tables) {
    PageConfiguration page = ReadPage(values, *table.as_table());
    if (std::ranges::find(pages, page.Path, &PageConfiguration::Path) != pages.end())
      values.Refuse(table.as_table()->get("path")->source(), "path",
                    "expected a path that no other page has, not " + page.Path);
    pages.push_back(std::move(page));
  }
}

Configuration ReadConfiguration(const ValueReader& values, const toml::table& root) {
  Configuration configuration;
  configuration.DatabaseFolder = values.Folder();
  configuration.Site = values.Folder() / configuration.Site;
  configuration.SecretFile = values.Folder() / configuration.SecretFile;
  for (const auto& [key, node] : root) {
    if (key == "server") {
      ReadServer(values, node, configuration);
    } else if (key == "page") {
      ReadPages(values, node, configuration.Pages);
    } else {
      values.Refuse(key.source(), key.str(), "unknown key; expected [server] or [[page]]");
    }
  }
  if (configuration.Pages.empty())
    throw ConfigurationError(values.File().string() + ": expected at least one [[page]]");
  return configuration;
}

}  // namespace

Configuration LoadConfiguration(const fs::path& file) {
  if (!fs::is_regular_file(file)) throw ConfigurationError("cannot read configuration " + file.string());
  try {
    return ReadConfiguration(ValueReader(file), toml::parse_file(file.string()));
  } catch (const toml::parse_error& error) {
    throw ConfigurationError(
        fmt::format("{}, line {}: {}", file.string(), error.source().begin.line, error.description()));
  }
}

}  // namespace orlune
