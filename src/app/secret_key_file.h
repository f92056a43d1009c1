#pragma once

#include <filesystem>

#include "sessions/cookie_sealer.h"

namespace orlune {

/// Reads the key of sealed cookies. Creates a missing file with a random key, readable by its owner only.
/// Throws ConfigurationError when it cannot, or when the file does not hold a key.
SecretKey LoadSecretKey(const std::filesystem::path& file);

}  // namespace orlune
