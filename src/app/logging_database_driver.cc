#include "app/logging_database_driver.h"

#include "base/log_text.h"
#include "drivers/postgresql/address.h"

namespace orlune {

std::unique_ptr<Connection> LoggingDatabaseDriver::Open(const std::string& path) {
  try {
    return inner_.Open(path);
  } catch (const DatabaseError& error) {
    log_.error("cannot open database {}: {}", WithoutPassword(path), OneLine(error.what()));
    throw;
  }
}

}  // namespace orlune
