#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "base/civil_time.h"

namespace orlune {

/// The arguments of `serve`.
struct ServeOptions {
  std::filesystem::path ConfigurationFile;
  std::optional<std::string> Listen;    ///< in place of the configured address
  std::optional<std::string> Database;  ///< in place of every page's database
  std::optional<DateTime> Now;          ///< a fixed time in place of the clock
};

/// Serves until SIGTERM or SIGINT, then finishes the running requests. Throws ConfigurationError and
/// std::runtime_error with a message for the operator.
void Serve(const ServeOptions& options);

}  // namespace orlune
