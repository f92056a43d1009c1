#pragma once

#include <spdlog/logger.h>

#include "app/configuration.h"
#include "app/regions.h"

namespace orlune {

/// Whether every page's database opens and answers a query. Logs why one does not.
bool AllDatabasesRespond(const Configuration& configuration, const Regions& regions, spdlog::logger& log);

}  // namespace orlune
