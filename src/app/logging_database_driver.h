#pragma once

#include <memory>
#include <string>

#include <spdlog/logger.h>

#include "platform/database.h"

namespace orlune {

/// Another driver, whose failures to open a database go to the log with their cause.
class LoggingDatabaseDriver : public DatabaseDriver {
 public:
  /// Both outlive this driver.
  LoggingDatabaseDriver(DatabaseDriver& inner, spdlog::logger& log) : inner_(inner), log_(log) {}
  std::unique_ptr<Connection> Open(const std::string& path) override;

 private:
  DatabaseDriver& inner_;
  spdlog::logger& log_;
};

}  // namespace orlune
