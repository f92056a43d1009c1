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

PageDatabase& Region::Database(const DatabaseAddress& address, spdlog::logger& log) {
  return databases_.try_emplace(address.Target(), engines_, address, log).first->second;
}

Regions::Regions(const Configuration& configuration, unsigned threads, spdlog::logger& log) {
  for (const PageConfiguration& page : configuration.Pages) {
    const std::string& name = page.Region.empty() ? configuration.Region : page.Region;
    Region& region = regions_.try_emplace(name, name, MostConnections(configuration, threads)).first->second;
    ofPages_.push_back({region.Settings(), region.Database(AddressOf(configuration, page), log)});
  }
}

}  // namespace orlune
