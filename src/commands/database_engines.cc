#include "commands/database_engines.h"

#include "drivers/postgresql/address.h"
#include "platform/database.h"

namespace orlune {

NamedDatabase DatabaseEngines::Named(const std::string& address) {
  if (IsPostgresqlAddress(address)) {
    throw DatabaseError("there is no engine for " + WithoutPassword(address));
  }
  return {sqlite_, address};
}

}  // namespace orlune
