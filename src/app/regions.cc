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

PageDatabaseOptions DatabaseOptions(const Configuration& configuration, unsigned threads) {
  PageDatabaseOptions options{configuration.DatabaseFolder, {}, {}};
  for (const PageConfiguration& page : configuration.Pages) options.Addresses.push_back(page.DBPath);
  // Every thread may need a connection, and so may the health check and the session cleaner.
  options.Postgresql.MostConnections = configuration.DatabaseConnections > 0
                                           ? static_cast<std::size_t>(configuration.DatabaseConnections)
                                           : threads + 2;
  return options;
}

}  // namespace

RegionalDatabases::RegionalDatabases(const std::string& region, const PageDatabaseOptions& options,
                                     spdlog::logger& log)
    : regional_(LoadRegion(region)), databases_(regional_, options), logging_(databases_, log) {}

Regions::Regions(const Configuration& configuration, unsigned threads, spdlog::logger& log) {
  const PageDatabaseOptions options = DatabaseOptions(configuration, threads);
  for (const PageConfiguration& page : configuration.Pages) {
    const std::string& region = page.Region.empty() ? configuration.Region : page.Region;
    auto& known = regions_[region];
    if (!known) known = std::make_unique<RegionalDatabases>(region, options, log);
    ofPages_.push_back(known.get());
  }
}

}  // namespace orlune
