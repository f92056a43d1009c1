#pragma once

#include <memory>
#include <string>

#include "base/regional_settings.h"
#include "drivers/schema/database_engine.h"
#include "drivers/sqlite/sqlite_driver.h"

namespace orlune {

/// SQLite files for the operator's commands.
class SqliteEngine : public DatabaseEngine {
 public:
  /// `regional` has to outlive the engine.
  explicit SqliteEngine(const RegionalSettings& regional) : driver_(regional) {}

  std::unique_ptr<DatabaseMaintenance> OpenToRead(const std::string& address) override;
  std::unique_ptr<DatabaseMaintenance> OpenToFill(const std::string& address) override;
  std::unique_ptr<Connection> Connect(const std::string& address) override;

 private:
  SqliteDriver driver_;
};

}  // namespace orlune
