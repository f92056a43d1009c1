#pragma once

#include <optional>
#include <string>

#include "base/civil_time.h"
#include "base/regional_settings.h"
#include "drivers/engines/database_engine.h"

namespace orlune {

/// What a new database starts with.
struct InitOptions {
  std::optional<std::string> AdminPassword;  ///< nothing: a random one
  bool Demo = false;                         ///< adds a small company around `Today`
  Date Today;
};

/// Creates a database with the account "admin", the group "default", colour schemes and event types. Returns
/// the password of "admin". Throws std::runtime_error, and leaves nothing behind then.
std::string InitDatabase(const NamedDatabase& named, const InitOptions& options,
                         const RegionalSettings& regional);

}  // namespace orlune
