#pragma once

#include <memory>
#include <string>

#include "base/regional_settings.h"
#include "drivers/postgresql/postgresql_driver.h"
#include "drivers/schema/database_engine.h"

namespace orlune {

/// PostgreSQL databases for the operator's commands. The database itself is there already.
class PostgresqlEngine : public DatabaseEngine {
 public:
  /// `regional` has to outlive the engine.
  explicit PostgresqlEngine(const RegionalSettings& regional) : driver_(regional) {}

  std::unique_ptr<DatabaseMaintenance> OpenToRead(const std::string& address) override;
  std::unique_ptr<DatabaseMaintenance> OpenToFill(const std::string& address) override;
  std::unique_ptr<Connection> Connect(const std::string& address) override;

 private:
  PostgresqlDriver driver_;
};

}  // namespace orlune
