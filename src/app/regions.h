#pragma once

#include <cstddef>
#include <map>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include <spdlog/logger.h>

#include "app/configuration.h"
#include "app/page_database.h"
#include "base/regional_settings.h"
#include "drivers/engines/database_engines.h"
#include "platform/date_languages.h"

namespace orlune {

/// The databases as the pages of one region use them, whose statements hold dates in the region's form.
class Region : public DateLanguages {
 public:
  /// Throws ConfigurationError when there is no such region.
  Region(const std::string& name, std::size_t mostConnections);

  const RegionalSettings& Settings() const { return settings_; }
  const RegionalSettings& In(std::string_view tag) override;
  /// The same one for each page with that address.
  PageDatabase& Database(const DatabaseAddress& address, Access access, spdlog::logger& log);

 private:
  const RegionalSettings settings_;
  std::mutex mutex_;
  std::map<std::string, RegionalSettings, std::less<>> inLanguages_;
  DatabaseEngines engines_;
  std::map<std::pair<std::string, Access>, PageDatabase> databases_;
};

/// The region of a hosting page, and its database there.
struct PagePlace {
  orlune::Region& Region;
  PageDatabase& Database;
  PageDatabase& DatabaseToRead;
};

/// The regions of all pages; pages of the same region share one object.
class Regions {
 public:
  /// `threads` is how many threads answer requests. The log outlives the regions.
  Regions(const Configuration& configuration, unsigned threads, spdlog::logger& log);

  /// Of the page at `index` of the configuration.
  const PagePlace& OfPage(std::size_t index) const { return ofPages_[index]; }

 private:
  std::map<std::string, Region> regions_;
  std::vector<PagePlace> ofPages_;
};

}  // namespace orlune
