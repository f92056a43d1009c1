#include "app/database_health.h"

#include <exception>
#include <memory>
#include <set>
#include <string>
#include <utility>

#include "base/log_text.h"

namespace orlune {
namespace {

// A pooled connection may outlive its server, so opening one proves nothing. The driver logs why a database
// cannot be opened.
bool Responds(DatabaseDriver& databases, const std::string& path, spdlog::logger& log) {
  bool isOpen = false;
  try {
    const std::unique_ptr<Connection> database = databases.Open(path);
    isOpen = true;
    database->Query({"SELECT TOP 1 SheetID FROM StyleSheets", {}})->Next();
    return true;
  } catch (const std::exception& error) {
    if (isOpen) log.error("no answer from the database: {}", OneLine(error.what()));
    return false;
  }
}

}  // namespace

bool AllDatabasesRespond(const Configuration& configuration, Regions& regions, spdlog::logger& log) {
  std::set<std::pair<DatabaseDriver*, std::string>> asked;
  for (std::size_t i = 0; i < configuration.Pages.size(); ++i) {
    DatabaseDriver& databases = regions.OfPage(i).Databases();
    const std::string& path = configuration.Pages[i].DBPath;
    if (asked.emplace(&databases, path).second && !Responds(databases, path, log)) return false;
  }
  return true;
}

}  // namespace orlune
