#include "drivers/engines/database_engines.h"

#include "drivers/postgresql/address.h"

namespace orlune {

NamedDatabase DatabaseEngines::Named(const std::string& address) {
  if (LooksLikeAnAddress(address)) throw DatabaseError(std::string(kHowToWriteAddresses));
  if (IsPostgresqlAddress(address)) return {servers_, address};
  return {files_, address};
}

}  // namespace orlune
