#include "drivers/sqlite/sqlite_driver.h"

#include <cerrno>
#include <system_error>

#include <fmt/format.h>
#include <sys/stat.h>

#include "drivers/sqlite/connection.h"
#include "drivers/sqlite/pool.h"

namespace orlune {

SqliteDriver::SqliteDriver(const RegionalSettings& regional, SqliteOptions options)
    : regional_(regional), options_(options) {}

SqliteDriver::~SqliteDriver() = default;

std::unique_ptr<Connection> SqliteDriver::Open(const std::string& path) {
  return Open(path, Access::kReadAndWrite);
}

std::unique_ptr<Connection> SqliteDriver::Open(const std::string& path, Access access) {
  return std::make_unique<sqlite::SqliteConnection>(PoolOf(path), access);
}

SqliteDriver::FileIdentity SqliteDriver::Identify(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) {
    throw DatabaseError(fmt::format("cannot open {}: {}", path, std::generic_category().message(errno)));
  }
  return {status.st_dev, status.st_ino};
}

std::shared_ptr<sqlite::Pool> SqliteDriver::PoolOf(const std::string& path) {
  const auto now = std::chrono::steady_clock::now();
  if (auto recent = FindRecent(path, now)) return recent;
  const FileIdentity identity = Identify(path);
  const std::lock_guard lock(mutex_);
  OpenFile& file = files_[path];
  if (!file.Databases || file.Identity != identity) {
    file.Identity = identity;
    file.Databases = std::make_shared<sqlite::Pool>(path, options_.BusyTimeout, options_.MostIdle,
                                                    options_.KeptBytes, regional_);
  }
  file.IdentifiedAt = now;
  return file.Databases;
}

/// The databases of a file that was identified a moment ago, or null.
std::shared_ptr<sqlite::Pool> SqliteDriver::FindRecent(const std::string& path,
                                                       std::chrono::steady_clock::time_point now) {
  const std::lock_guard lock(mutex_);
  const auto found = files_.find(path);
  const bool isRecent = found != files_.end() && now - found->second.IdentifiedAt < options_.IdentityCheck;
  return isRecent ? found->second.Databases : nullptr;
}

}  // namespace orlune
