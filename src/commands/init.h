#pragma once

#include <optional>
#include <string>

#include "base/civil_time.h"
#include "base/regional_settings.h"

namespace orlune {

/// What a new database is made with.
struct InitOptions {
  std::string Database;                      ///< a file's path, or a PostgreSQL address
  std::optional<std::string> AdminPassword;  ///< nothing: one is made up
  bool Demo = false;                         ///< adds a small company around `Today`
  Date Today;
};

/// Writes the database `options.Database`: tables, the account "admin", the group "default", colour schemes
/// and event types. Only its owner may read a file, as it holds passwords; on PostgreSQL the database is
/// there already and has none of the tables. Returns the password of "admin". Throws std::runtime_error with
/// a sentence for the operator, and then leaves nothing behind; what exists is never touched.
std::string InitDatabase(const InitOptions& options, const RegionalSettings& regional);

}  // namespace orlune
