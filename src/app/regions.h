#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <spdlog/logger.h>

#include "app/configuration.h"
#include "app/logging_database_driver.h"
#include "app/page_databases.h"
#include "base/regional_settings.h"

namespace orlune {

/// The databases as the pages of one region use them, whose statements hold dates in the region's form.
class RegionalDatabases {
 public:
  /// Throws ConfigurationError when there is no such region.
  RegionalDatabases(const std::string& region, const PageDatabaseOptions& options, spdlog::logger& log);

  const RegionalSettings& Regional() const { return regional_; }
  DatabaseDriver& Databases() { return logging_; }

 private:
  const RegionalSettings regional_;
  PageDatabases databases_;
  LoggingDatabaseDriver logging_;
};

/// The regions of all pages; pages of the same region share one object.
class Regions {
 public:
  /// `threads` is how many threads answer requests. The log outlives the regions.
  Regions(const Configuration& configuration, unsigned threads, spdlog::logger& log);

  /// The region of the page at `index` of the configuration.
  RegionalDatabases& OfPage(std::size_t index) { return *ofPages_[index]; }

 private:
  std::map<std::string, std::unique_ptr<RegionalDatabases>> regions_;
  std::vector<RegionalDatabases*> ofPages_;
};

}  // namespace orlune
