#pragma once

#include <memory>

#include "base/regional_settings.h"
#include "drivers/engines/database_engine.h"
#include "drivers/sqlite/sqlite_driver.h"

namespace orlune {

/// SQLite files.
class SqliteEngine : public DatabaseEngine {
 public:
  /// `regional` has to outlive the engine.
  explicit SqliteEngine(const RegionalSettings& regional) : regional_(regional), driver_(regional) {}

  std::unique_ptr<Connection> Connect(const DatabaseAddress& address, Access access) override;
  void Create(const DatabaseAddress& address, const std::function<void(Connection&)>& fill) override;
  std::unique_ptr<DatabaseMaintenance> OpenToRead(const DatabaseAddress& address) override;
  std::unique_ptr<DatabaseMaintenance> OpenToFill(const DatabaseAddress& address) override;

 private:
  const RegionalSettings& regional_;
  SqliteDriver driver_;
};

}  // namespace orlune
