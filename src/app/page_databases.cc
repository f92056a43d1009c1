#include "app/page_databases.h"

#include "drivers/postgresql/address.h"
#include "drivers/postgresql/postgresql_driver.h"
#include "drivers/sqlite/sqlite_driver.h"

namespace orlune {

PageDatabases::PageDatabases(const RegionalSettings& regional, const PageDatabaseOptions& options)
    : folder_(options.Folder),
      files_(std::make_unique<SqliteDriver>(regional)),
      servers_(std::make_unique<PostgresqlDriver>(regional, options.Postgresql)) {
  for (const std::string& address : options.Addresses) addresses_.emplace(WithoutPassword(address), address);
}

std::unique_ptr<Connection> PageDatabases::Open(const std::string& path) {
  if (!IsPostgresqlAddress(path)) return files_->Open((folder_ / path).lexically_normal().string());
  const auto known = addresses_.find(path);
  return servers_->Open(known == addresses_.end() ? path : known->second);
}

}  // namespace orlune
