#include "app/settings.h"

#include <iterator>

#include <fmt/format.h>

#include "app/page_properties.h"

namespace orlune {
namespace {

constexpr ServerSetting kServerSettings[] = {
    {"listen", &Configuration::Listen, "numeric address and port"},
    {"site", &Configuration::Site, "folder served beside the pages"},
    {"compress", &Configuration::Compresses, "send pages and files compressed to browsers that take it"},
    {"join_style_sheets", &Configuration::JoinsStyleSheets,
     "send a style sheet with the one that it imports"},
    {"region", &Configuration::Region, "how dates are written"},
    {"time_zone", &Configuration::TimeZone,
     "of the events' times, such as \"Europe/Helsinki\"; \"\": the machine's"},
    {"session_minutes", NumberSetting{&Configuration::SessionMinutes, 1, 525'600},
     "idle minutes until logout"},
    {"session_store", WordSetting{&Configuration::StoresSessions, "memory", "database"},
     "where logins are kept: \"memory\" or \"database\""},
    {"threads", NumberSetting{&Configuration::Threads, 0, 512}, "0: chosen from the processors"},
    {"database_connections", NumberSetting{&Configuration::DatabaseConnections, 0, 1000},
     "most connections to a database server, for each region; 0: as many as threads need"},
    {"secret_file", &Configuration::SecretFile, "key of encrypted cookies; created when missing"},
    {"trusted_proxies", &Configuration::TrustedProxies, "addresses and networks of proxies in front"},
    {"drain_seconds", NumberSetting{&Configuration::DrainSeconds, 0, 3600},
     "how long to go on serving after SIGTERM or SIGINT"},
    {"allowed_hosts", &Configuration::AllowedHosts, "names to answer under; none: under any"},
    {"content_security_policy", &Configuration::ContentSecurityPolicy, "what pages may load; \"\": anything"},
    {"connections", NumberSetting{&Configuration::Connections, 1, 1'000'000}, "most connections at a time"},
    {"connections_per_address", NumberSetting{&Configuration::ConnectionsPerAddress, 1, 1'000'000},
     "most of one address; less while there are few free ones"},
    {"reserved_connections", NumberSetting{&Configuration::ReservedConnections, 0, 1'000'000},
     "of these, for addresses that have none"},
    {"reply_megabytes", NumberSetting{&Configuration::ReplyMegabytes, 1, 1'000'000},
     "most memory for pages that are being sent"},
    {"certificate", &Configuration::Certificate, "of HTTPS, with its chain; none: HTTP"},
    {"key", &Configuration::Key, "the certificate's private key"},
    {"redirect_listen", &Configuration::RedirectListen, "address and port of HTTP that leads to HTTPS"},
    {"hsts_seconds", NumberSetting{&Configuration::HstsSeconds, 0, 100'000'000},
     "how long browsers use HTTPS only; 0: they are not told"},
};

constexpr PageSetting kPageSettings[] = {
    {"path", &PageConfiguration::Path, "none", "the page's address, begins with \"/\""},
    {"region", &PageConfiguration::Region, "the server's", "how the page's dates are written"},
    {"sharing_with_login", &PageConfiguration::SharesWithLogin, "false",
     "with Sharing, devices may also use the login's password"},
};

struct TypeName {
  std::string_view operator()(NumberSetting) const { return "number"; }
  std::string_view operator()(ServerSetting::Switch) const { return "true or false"; }
  std::string_view operator()(PageSetting::Switch) const { return "true or false"; }
  std::string_view operator()(ServerSetting::Networks) const { return "list of texts"; }
  std::string_view operator()(ServerSetting::Hosts) const { return "list of texts"; }
  template <class Other>
  std::string_view operator()(Other) const {
    return "text";
  }
};

/// The default of a setting as a configuration file would have it.
struct DefaultText {
  Configuration Defaults;

  std::string operator()(ServerSetting::Text text) const { return fmt::format("\"{}\"", Defaults.*text); }
  std::string operator()(ServerSetting::Path path) const {
    return fmt::format("\"{}\"", (Defaults.*path).string());
  }
  std::string operator()(ServerSetting::Switch isOn) const { return Defaults.*isOn ? "true" : "false"; }
  std::string operator()(ServerSetting::Networks) const { return "[]"; }
  std::string operator()(ServerSetting::Hosts) const { return "[]"; }
  std::string operator()(const NumberSetting& number) const {
    return std::to_string(Defaults.*number.Member);
  }
  std::string operator()(const WordSetting& word) const {
    return fmt::format("\"{}\"", Defaults.*word.Member ? word.True : word.False);
  }
};

void Describe(std::string& text, std::string_view name, std::string_view type, std::string_view help,
              std::string_view defaultText) {
  fmt::format_to(std::back_inserter(text), "  {:<24}{:<15}{} (default {})\n", name, type, help, defaultText);
}

}  // namespace

std::span<const ServerSetting> ServerSettings() {
  return kServerSettings;
}

std::span<const PageSetting> PageSettings() {
  return kPageSettings;
}

std::string DescribeSettings() {
  std::string text = "Configuration file (TOML)\n[server]\n";
  for (const auto& [name, target, help] : kServerSettings)
    Describe(text, name, std::visit(TypeName(), target), help, std::visit(DefaultText(), target));
  text += "[[page]]\n";
  for (const auto& [name, target, defaultText, help] : kPageSettings)
    Describe(text, name, std::visit(TypeName(), target), help, defaultText);
  for (const PageProperty& property : PageProperties()) {
    const bool isSwitch = std::holds_alternative<PageProperty::SwitchSetter>(property.Set);
    Describe(text, property.Name, isSwitch ? "true or false" : "text", property.Help, property.Default);
  }
  return text;
}

}  // namespace orlune
