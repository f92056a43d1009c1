#include "app/database_health.h"

#include <exception>
#include <memory>
#include <set>

#include "base/log_text.h"
#include "platform/database.h"

namespace orlune {
namespace {

// A pooled connection may outlive its server, so opening one proves nothing. The driver logs why a database
// cannot be opened.
bool Responds(PageDatabase& page, spdlog::logger& log) {
  bool isOpen = false;
  try {
    const std::unique_ptr<Connection> database = page.Open(page.Address().Displayed());
    isOpen = true;
    database->Query({"SELECT TOP 1 SheetID FROM StyleSheets", {}})->Next();
    return true;
  } catch (const std::exception& error) {
    if (isOpen) log.error("no answer from the database: {}", OneLine(error.what()));
    return false;
  }
}

}  // namespace

bool AllDatabasesRespond(const Configuration& configuration, const Regions& regions, spdlog::logger& log) {
  std::set<PageDatabase*> asked;
  for (std::size_t i = 0; i < configuration.Pages.size(); ++i) {
    PageDatabase& database = regions.OfPage(i).DatabaseToRead;
    if (asked.insert(&database).second && !Responds(database, log)) return false;
  }
  return true;
}

}  // namespace orlune
