#include "app/page_database.h"

#include "base/log_text.h"

namespace orlune {

std::unique_ptr<Connection> PageDatabase::Open(const std::string& /*displayed*/) {
  try {
    return database_.Engine.Connect(database_.Address, access_);
  } catch (const DatabaseError& error) {
    log_.error("cannot open database {}: {}", database_.Address.Displayed(), OneLine(error.what()));
    throw;
  }
}

}  // namespace orlune
