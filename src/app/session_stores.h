#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <vector>

#include <spdlog/logger.h>

#include "app/configuration.h"
#include "app/regions.h"
#include "sessions/session_cleaner.h"
#include "sessions/session_prolonger.h"
#include "sessions/session_store.h"

namespace orlune {

/// A session store for each page, of the configured kind, and the cleaner of those in databases.
class SessionStores {
 public:
  /// The regions and the log outlive the stores.
  SessionStores(const Configuration& configuration, Regions& regions, spdlog::logger& log);

  /// The store of the page at `index` of the configuration.
  SessionStore& OfPage(std::size_t index, Access access) {
    return access == Access::kRead && !storesToRead_.empty() ? *storesToRead_[index] : *stores_[index];
  }

 private:
  std::vector<std::unique_ptr<SessionStore>> stores_;
  std::vector<std::unique_ptr<SessionStore>> storesToRead_;  // the same sessions; none when in memory
  std::map<PageDatabase*, SessionProlonger> prolongers_;
  std::unique_ptr<SessionCleaner> cleaner_;
};

}  // namespace orlune
