#include "drivers/engines/sqlite_engine.h"

#include <chrono>
#include <filesystem>

#include "drivers/sqlite/base_schema.h"
#include "drivers/sqlite/handles.h"
#include "drivers/sqlite/maintenance.h"

namespace orlune {
namespace {

/// A command can wait for others longer than a page.
constexpr std::chrono::seconds kBusyTimeout{30};

}  // namespace

std::unique_ptr<Connection> SqliteEngine::Connect(const DatabaseAddress& address, Access access) {
  return driver_.Open(address.Target(), access);
}

void SqliteEngine::Create(const DatabaseAddress& address, const std::function<void(Connection&)>& fill) {
  CreateBaseDatabase(address.Target(), [&](const std::filesystem::path& unfinished) {
    fill(*SqliteDriver(regional_).Open(unfinished.string()));
  });
}

std::unique_ptr<DatabaseMaintenance> SqliteEngine::OpenToRead(const DatabaseAddress& address) {
  return std::make_unique<sqlite::Maintenance>(sqlite::OpenReadOnly(address.Target(), kBusyTimeout));
}

std::unique_ptr<DatabaseMaintenance> SqliteEngine::OpenToFill(const DatabaseAddress& address) {
  if (!std::filesystem::exists(address.Target())) CreateBaseDatabase(address.Target());
  return std::make_unique<sqlite::Maintenance>(sqlite::OpenToFill(address.Target(), kBusyTimeout));
}

}  // namespace orlune
