#pragma once

#include <string>

#include "base/regional_settings.h"
#include "drivers/engines/postgresql_engine.h"
#include "drivers/engines/sqlite_engine.h"
#include "drivers/schema/database_engine.h"

namespace orlune {

/// The engines that an operator's addresses lead to.
class DatabaseEngines {
 public:
  /// `regional` has to outlive the engines.
  explicit DatabaseEngines(const RegionalSettings& regional) : files_(regional), servers_(regional) {}

  /// Throws DatabaseError for an address that is misspelt. The engines outlive what it returns.
  NamedDatabase Named(const std::string& address);

 private:
  SqliteEngine files_;
  PostgresqlEngine servers_;
};

}  // namespace orlune
