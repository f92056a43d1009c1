#include "drivers/engines/database_engines.h"

#include "drivers/engines/postgresql_engine.h"
#include "drivers/engines/sqlite_engine.h"

namespace orlune {

DatabaseEngines::DatabaseEngines(const RegionalSettings& regional, std::size_t mostConnections)
    : files_(std::make_unique<SqliteEngine>(regional)),
      servers_(std::make_unique<PostgresqlEngine>(regional, mostConnections)) {}

NamedDatabase DatabaseEngines::Named(const DatabaseAddress& address) {
  return {address.IsFile() ? *files_ : *servers_, address};
}

}  // namespace orlune
