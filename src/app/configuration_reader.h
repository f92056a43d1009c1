#pragma once

#include <filesystem>

#include "app/configuration.h"

namespace orlune {

/// Reads a TOML file; its relative paths begin at its own folder. Throws ConfigurationError that names file,
/// line, key and what was expected.
Configuration LoadConfiguration(const std::filesystem::path& file);

}  // namespace orlune
