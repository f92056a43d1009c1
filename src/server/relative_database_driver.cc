#include "server/relative_database_driver.h"

#include <utility>

namespace orlune {

RelativeDatabaseDriver::RelativeDatabaseDriver(DatabaseDriver& inner, std::filesystem::path folder)
    : inner_(inner), folder_(std::move(folder)) {}

std::unique_ptr<Connection> RelativeDatabaseDriver::Open(const std::string& path) {
  return inner_.Open((folder_ / path).lexically_normal().string());
}

}  // namespace orlune
