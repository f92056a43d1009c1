#include "drivers/engines/postgresql_engine.h"

#include "drivers/postgresql/address.h"
#include "drivers/postgresql/base_schema.h"
#include "drivers/postgresql/maintenance.h"
#include "platform/database.h"

namespace orlune {

std::unique_ptr<DatabaseMaintenance> PostgresqlEngine::OpenToRead(const std::string& address) {
  try {
    return std::make_unique<postgresql::Maintenance>(address);
  } catch (const DatabaseError& error) {
    throw DatabaseError("cannot open " + WithoutPassword(address) + ": " + error.what());
  }
}

std::unique_ptr<DatabaseMaintenance> PostgresqlEngine::OpenToFill(const std::string& address) {
  std::unique_ptr<DatabaseMaintenance> database = OpenToRead(address);
  if (database->Tables().Find("Calendars") == nullptr) CreateBaseTables(address);
  return database;
}

std::unique_ptr<Connection> PostgresqlEngine::Connect(const std::string& address) {
  return driver_.Open(address);
}

}  // namespace orlune
