#include "app/configuration.h"

#include <algorithm>

#include <fmt/format.h>

#include "http/listening_socket.h"
#include "platform/database.h"

namespace orlune {
namespace {

namespace fs = std::filesystem;

bool IsBelow(const fs::path& file, const fs::path& folder) {
  const fs::path relative = fs::weakly_canonical(file).lexically_relative(fs::weakly_canonical(folder));
  return !relative.empty() && *relative.begin() != "..";
}

void CheckTransport(const Configuration& configuration) {
  if (configuration.Certificate.empty() != configuration.Key.empty())
    throw ConfigurationError("HTTPS needs both certificate and key in [server]");
  if (configuration.RedirectListen.empty()) return;
  CheckListenAddress(configuration.RedirectListen);
  if (configuration.Certificate.empty())
    throw ConfigurationError("redirect_listen leads to HTTPS, which needs certificate and key in [server]");
}

const PropertyValue* FindProperty(const PageConfiguration& page, std::string_view name) {
  const auto found = std::ranges::find_if(
      page.Properties, [name](const PropertyValue& value) { return value.Property->Name == name; });
  return found == page.Properties.end() ? nullptr : &*found;
}

}  // namespace

bool PageConfiguration::IsOn(std::string_view name) const {
  const PropertyValue* value = FindProperty(*this, name);
  return value != nullptr && std::get<bool>(value->Value);
}

std::string PageConfiguration::TextOf(std::string_view name) const {
  const PropertyValue* value = FindProperty(*this, name);
  return value == nullptr ? "" : std::get<std::string>(value->Value);
}

void CheckConfiguration(const Configuration& configuration) {
  CheckListenAddress(configuration.Listen);
  if (!fs::is_directory(configuration.Site))
    throw ConfigurationError(fmt::format("site folder {} is missing", configuration.Site.string()));
  const auto refuseBelowSite = [&configuration](const fs::path& file) {
    if (IsBelow(file, configuration.Site))
      throw ConfigurationError(
          fmt::format("{} would be served to everybody: move it out of the site folder", file.string()));
  };
  refuseBelowSite(configuration.SecretFile);
  CheckTransport(configuration);
  if (!configuration.Key.empty()) refuseBelowSite(configuration.Key);
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

}  // namespace orlune
