#include "drivers/engines/sqlite_engine.h"

#include <chrono>
#include <filesystem>

#include "drivers/engines/private_files.h"
#include "drivers/sqlite/base_schema.h"
#include "drivers/sqlite/handles.h"
#include "drivers/sqlite/maintenance.h"

namespace orlune {
namespace {

/// A command can wait for others longer than a page.
constexpr std::chrono::seconds kBusyTimeout{30};

}  // namespace

std::unique_ptr<DatabaseMaintenance> SqliteEngine::OpenToRead(const std::string& address) {
  return std::make_unique<sqlite::Maintenance>(sqlite::OpenReadOnly(address, kBusyTimeout));
}

std::unique_ptr<DatabaseMaintenance> SqliteEngine::OpenToFill(const std::string& address) {
  const PrivateFiles privateFiles;
  if (!std::filesystem::exists(address)) CreateBaseDatabase(address);
  return std::make_unique<sqlite::Maintenance>(sqlite::OpenToFill(address, kBusyTimeout));
}

std::unique_ptr<Connection> SqliteEngine::Connect(const std::string& address) {
  return driver_.Open(address);
}

}  // namespace orlune
