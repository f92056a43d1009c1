#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "base/civil_time.h"

namespace orlune {

/// What the command line says about serving.
struct ServeOptions {
  std::filesystem::path ConfigurationFile;
  std::optional<std::string> Listen;    ///< in place of the configured address
  std::optional<std::string> Database;  ///< in place of every page's database
  std::optional<DateTime> Now;          ///< stops the clock there
};

/// Serves until SIGTERM or SIGINT comes, then finishes the running requests. Throws ConfigurationError and
/// std::runtime_error with a sentence for the operator.
void Serve(const ServeOptions& options);

}  // namespace orlune
