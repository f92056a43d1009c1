#include "drivers/postgresql/postgresql_driver.h"

#include "drivers/postgresql/address.h"
#include "drivers/postgresql/connection.h"
#include "drivers/postgresql/pool.h"

namespace orlune {

PostgresqlDriver::PostgresqlDriver(const RegionalSettings& regional, const PostgresqlOptions& options)
    : regional_(regional), options_(options) {}

PostgresqlDriver::~PostgresqlDriver() = default;

std::unique_ptr<Connection> PostgresqlDriver::Open(const std::string& path) {
  return Open(path, Access::kReadAndWrite);
}

std::unique_ptr<Connection> PostgresqlDriver::Open(const std::string& path, Access access) {
  try {
    return std::make_unique<postgresql::PostgresqlConnection>(PoolOf(path), access);
  } catch (const DatabaseError& error) {
    throw DatabaseUnavailable("cannot open " + WithoutPassword(path) + ": " + error.what());
  }
}

std::shared_ptr<postgresql::Pool> PostgresqlDriver::PoolOf(const std::string& address) {
  const std::lock_guard lock(mutex_);
  auto& pool = pools_[address];
  if (!pool) pool = std::make_shared<postgresql::Pool>(address, options_, regional_);
  return pool;
}

}  // namespace orlune
