#pragma once

#include <memory>
#include <string>

#include <spdlog/logger.h>

#include "drivers/engines/database_engines.h"

namespace orlune {

/// The database of one hosting page, with one kind of access. Why it cannot be opened goes to the log.
class PageDatabase : public DatabaseDriver {
 public:
  /// The engines and the log outlive this driver.
  PageDatabase(DatabaseEngines& engines, const DatabaseAddress& address, Access access, spdlog::logger& log)
      : database_(engines.Named(address)), access_(access), log_(log) {}

  const DatabaseAddress& Address() const { return database_.Address; }

  /// Opens the page's database. A page knows its address only as displayed, which decides nothing here.
  std::unique_ptr<Connection> Open(const std::string& displayed) override;

 private:
  NamedDatabase database_;
  const Access access_;
  spdlog::logger& log_;
};

}  // namespace orlune
