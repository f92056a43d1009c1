#include "app/configuration.h"

#include <fmt/format.h>

#include "drivers/postgresql/address.h"
#include "http/listening_socket.h"

namespace orlune {
namespace {

namespace fs = std::filesystem;

bool IsBelow(const fs::path& file, const fs::path& folder) {
  const fs::path relative = fs::weakly_canonical(file).lexically_relative(fs::weakly_canonical(folder));
  return !relative.empty() && *relative.begin() != "..";
}

}  // namespace

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
  for (const PageConfiguration& page : configuration.Pages) {
    if (page.DBPath.empty()) throw ConfigurationError("page " + page.Path + " has no DBPath");
    if (LooksLikeAnAddress(page.DBPath))
      throw ConfigurationError("DBPath of page " + page.Path + ": " + std::string(kHowToWriteAddresses));
    if (!IsPostgresqlAddress(page.DBPath)) refuseBelowSite(DatabaseFile(configuration, page));
  }
}

fs::path DatabaseFile(const Configuration& configuration, const PageConfiguration& page) {
  return (configuration.DatabaseFolder / page.DBPath).lexically_normal();
}

}  // namespace orlune
