#include "commands/database_engines.h"

#include "commands/database_address.h"
#include "platform/database.h"

namespace orlune {

DatabasePlace DatabaseEngines::PlaceOf(const std::string& address) {
  if (IsPostgresqlUrl(address)) {
    throw DatabaseError("there is no engine for " + ShownAddress(address));
  }
  return {sqlite_, address};
}

}  // namespace orlune
