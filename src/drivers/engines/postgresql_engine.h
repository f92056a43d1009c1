#pragma once

#include <cstddef>
#include <memory>

#include "base/regional_settings.h"
#include "drivers/engines/database_engine.h"
#include "drivers/postgresql/postgresql_driver.h"

namespace orlune {

/// Databases on PostgreSQL servers. The database itself exists before its tables.
class PostgresqlEngine : public DatabaseEngine {
 public:
  /// `regional` has to outlive the engine.
  PostgresqlEngine(const RegionalSettings& regional, std::size_t mostConnections)
      : driver_(regional, PostgresqlOptions{.MostConnections = mostConnections}) {}

  std::unique_ptr<Connection> Connect(const DatabaseAddress& address, Access access) override;
  void Create(const DatabaseAddress& address, const std::function<void(Connection&)>& fill) override;
  std::unique_ptr<DatabaseMaintenance> OpenToRead(const DatabaseAddress& address) override;
  std::unique_ptr<DatabaseMaintenance> OpenToFill(const DatabaseAddress& address) override;

 private:
  PostgresqlDriver driver_;
};

}  // namespace orlune
