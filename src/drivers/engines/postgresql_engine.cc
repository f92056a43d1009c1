#include "drivers/engines/postgresql_engine.h"

#include "drivers/postgresql/base_schema.h"
#include "drivers/postgresql/maintenance.h"

namespace orlune {

std::unique_ptr<Connection> PostgresqlEngine::Connect(const DatabaseAddress& address, Access access) {
  return driver_.Open(address.Target(), access);
}

void PostgresqlEngine::Create(const DatabaseAddress& address, const std::function<void(Connection&)>& fill) {
  CreateBaseTables(address.Target());
  try {
    fill(*Connect(address, Access::kReadAndWrite));
  } catch (const std::exception& error) {
    DropTables(address.Target());
    throw DatabaseError("cannot fill " + address.Displayed() + ": " + error.what());
  }
}

std::unique_ptr<DatabaseMaintenance> PostgresqlEngine::OpenToRead(const DatabaseAddress& address) {
  try {
    return std::make_unique<postgresql::Maintenance>(address.Target());
  } catch (const DatabaseError& error) {
    throw DatabaseError("cannot open " + address.Displayed() + ": " + error.what());
  }
}

std::unique_ptr<DatabaseMaintenance> PostgresqlEngine::OpenToFill(const DatabaseAddress& address) {
  std::unique_ptr<DatabaseMaintenance> database = OpenToRead(address);
  if (database->Tables().Find("Calendars") == nullptr) CreateBaseTables(address.Target());
  return database;
}

}  // namespace orlune
