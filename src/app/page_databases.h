#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "base/regional_settings.h"
#include "drivers/postgresql/options.h"
#include "platform/database.h"

namespace orlune {

/// What the databases of the configuration are opened with.
struct PageDatabaseOptions {
  std::filesystem::path Folder;        ///< where relative paths of files start
  std::vector<std::string> Addresses;  ///< of servers, with their passwords
  PostgresqlOptions Postgresql;
};

/// The databases of hosting pages, each by the engine that its path names: a PostgreSQL address, or a file. A
/// path may come without what visitors must not see, the server's own folder and passwords.
class PageDatabases : public DatabaseDriver {
 public:
  /// `regional` has to outlive the driver and its connections.
  PageDatabases(const RegionalSettings& regional, const PageDatabaseOptions& options);

  std::unique_ptr<Connection> Open(const std::string& path) override;

 private:
  const std::filesystem::path folder_;
  std::map<std::string, std::string, std::less<>> addresses_;  // by what may be seen of them
  const std::unique_ptr<DatabaseDriver> files_;
  const std::unique_ptr<DatabaseDriver> servers_;
};

}  // namespace orlune
