#include "app/regions.h"

#include <stdexcept>

#include "drivers/icu/icu_regional_settings.h"

namespace orlune {
namespace {

RegionalSettings LoadRegion(const std::string& region) {
  try {
    return LoadRegionalSettings(region);
  } catch (const std::invalid_argument& error) {
    throw ConfigurationError(std::string("region: ") + error.what());
  }
}

// Every thread may need a connection, and so may the health check and the session cleaner.
std::size_t MostConnections(const Configuration& configuration, unsigned threads) {
  return configuration.DatabaseConnections > 0 ? static_cast<std::size_t>(configuration.DatabaseConnections)
                                               : threads + 2;
}

}  // namespace

Region::Region(const std::string& name, std::size_t mostConnections)
    : settings_(LoadRegion(name)), engines_(settings_, mostConnections) {}

PageDatabase& Region::Database(const DatabaseAddress& address, Access access, spdlog::logger& log) {
  return databases_.try_emplace({address.Target(), access}, engines_, address, access, log).first->second;
}

Regions::Regions(const Configuration& configuration, unsigned threads, spdlog::logger& log) {
  for (const PageConfiguration& page : configuration.Pages) {
    const std::string& name = page.Region.empty() ? configuration.Region : page.Region;
    Region& region = regions_.try_emplace(name, name, MostConnections(configuration, threads)).first->second;
    const DatabaseAddress address = AddressOf(configuration, page);
    ofPages_.push_back({region.Settings(), region.Database(address, Access::kReadAndWrite, log),
                        region.Database(address, Access::kRead, log)});
  }
}

}  // namespace orlune
