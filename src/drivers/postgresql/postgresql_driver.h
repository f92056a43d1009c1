#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "base/regional_settings.h"
#include "drivers/postgresql/options.h"
#include "platform/database.h"

namespace orlune {

namespace postgresql {
class Pool;
}

/// Keeps calendars on PostgreSQL servers, version 15 or later. A database is named by its address, such as
/// "postgresql://user@host/name". What was committed survives as the server is set up to keep it.
class PostgresqlDriver : public DatabaseDriver {
 public:
  /// Dates in statements are read as `regional` writes them; it has to outlive the driver and its
  /// connections.
  explicit PostgresqlDriver(const RegionalSettings& regional, const PostgresqlOptions& options = {});
  ~PostgresqlDriver() override;

  /// Waits when all connections to the database are in use.
  std::unique_ptr<Connection> Open(const std::string& path) override;
  std::unique_ptr<Connection> Open(const std::string& path, Access access);

 private:
  std::shared_ptr<postgresql::Pool> PoolOf(const std::string& address);

  const RegionalSettings& regional_;
  const PostgresqlOptions options_;
  std::mutex mutex_;
  std::map<std::string, std::shared_ptr<postgresql::Pool>, std::less<>> pools_;
};

}  // namespace orlune
