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

RegionalSettings InLanguage(RegionalSettings settings, const std::string& tag) {
  try {
    RegionalSettings ofLanguage = LoadRegionalSettings(tag);
    settings.Names = std::move(ofLanguage.Names);
    settings.UpperCaseNames = std::move(ofLanguage.UpperCaseNames);
  } catch (const std::invalid_argument&) {
    // A pack whose language ICU does not know.
  }
  return settings;
}

// Every thread may need a connection, and so may the health check and the session cleaner.
std::size_t MostConnections(const Configuration& configuration, unsigned threads) {
  return configuration.DatabaseConnections > 0 ? static_cast<std::size_t>(configuration.DatabaseConnections)
                                               : threads + 2;
}

}  // namespace

Region::Region(const std::string& name, std::size_t mostConnections)
    : settings_(LoadRegion(name)), engines_(settings_, mostConnections) {}

const RegionalSettings& Region::In(std::string_view tag) {
  const std::string_view ownLanguage =
      std::string_view(settings_.Region).substr(0, settings_.Region.find('_'));
  if (tag == ownLanguage) return settings_;
  const std::lock_guard lock(mutex_);
  const auto known = inLanguages_.find(tag);
  if (known != inLanguages_.end()) return known->second;
  return inLanguages_.emplace(tag, InLanguage(settings_, std::string(tag))).first->second;
}

PageDatabase& Region::Database(const DatabaseAddress& address, Access access, spdlog::logger& log) {
  return databases_.try_emplace({address.Target(), access}, engines_, address, access, log).first->second;
}

Regions::Regions(const Configuration& configuration, unsigned threads, spdlog::logger& log) {
  for (const PageConfiguration& page : configuration.Pages) {
    const std::string& name = page.Region.empty() ? configuration.Region : page.Region;
    Region& region = regions_.try_emplace(name, name, MostConnections(configuration, threads)).first->second;
    const DatabaseAddress address = AddressOf(configuration, page);
    ofPages_.push_back({region, region.Database(address, Access::kReadAndWrite, log),
                        region.Database(address, Access::kRead, log)});
  }
}

}  // namespace orlune
