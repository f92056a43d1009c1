#include "commands/database_engines.h"

#include "commands/database_address.h"
#include "platform/database.h"

namespace orlune {

DatabaseEngine& DatabaseEngines::Of(std::string_view address) {
  if (IsPostgresqlUrl(address)) {
    throw DatabaseError("there is no engine for " + ShownAddress(address));
  }
  return sqlite_;
}

}  // namespace orlune
