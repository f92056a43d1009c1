#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "platform/civil_time.h"
#include "platform/regional_settings.h"

namespace orlune {

/// What a new database is made with.
struct InitOptions {
  std::filesystem::path File;
  std::optional<std::string> AdminPassword;  ///< nothing: one is made up
  bool Demo = false;                         ///< adds a small company around `Today`
  Date Today;
};

/// Writes the database `options.File`: tables, the account "admin", the group "default", colour schemes and
/// event types. Only its owner may read it, as it holds passwords. Returns the password of "admin". Throws
/// std::runtime_error with a sentence for the operator, and then leaves no file behind; a file that exists is
/// never touched.
std::string InitDatabase(const InitOptions& options, const RegionalSettings& regional);

}  // namespace orlune
