#pragma once

#include <cstddef>
#include <memory>

#include "base/regional_settings.h"
#include "drivers/engines/database_engine.h"

namespace orlune {

/// All engines. May be used by several threads at once.
class DatabaseEngines {
 public:
  /// At most `mostConnections` to each database on a server. `regional` has to outlive the engines.
  explicit DatabaseEngines(const RegionalSettings& regional, std::size_t mostConnections = 16);

  /// The engines outlive what it returns.
  NamedDatabase Named(const DatabaseAddress& address);

 private:
  std::unique_ptr<DatabaseEngine> files_;
  std::unique_ptr<DatabaseEngine> servers_;
};

}  // namespace orlune
