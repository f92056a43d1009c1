#include "app/secret_key_file.h"

#include <algorithm>
#include <fstream>
#include <string>

#include <fcntl.h>
#include <fmt/format.h>
#include <sodium.h>
#include <unistd.h>

#include "base/configuration_error.h"

namespace orlune {
namespace {

namespace fs = std::filesystem;

void CreateSecretKey(const fs::path& file) {
  std::error_code ignored;
  fs::create_directories(file.parent_path(), ignored);
  SecretKey key;
  randombytes_buf(key.data(), key.size());
  const int descriptor = open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  const bool isWritten = descriptor >= 0 && write(descriptor, key.data(), key.size()) == std::ssize(key);
  if (descriptor >= 0) close(descriptor);
  if (!isWritten)
    throw ConfigurationError(fmt::format("cannot write a key to secret_file {}", file.string()));
}

}  // namespace

SecretKey LoadSecretKey(const fs::path& file) {
  if (!fs::exists(fs::symlink_status(file))) CreateSecretKey(file);
  std::ifstream stream(file, std::ios::binary);
  if (!stream) throw ConfigurationError(fmt::format("cannot read secret_file {}", file.string()));
  std::string bytes(std::tuple_size_v<SecretKey> + 1, '\0');
  stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  SecretKey key;
  if (stream.gcount() != std::ssize(key)) {
    throw ConfigurationError(
        fmt::format("secret_file {} does not hold a key of {} bytes; remove it to get a new one",
                    file.string(), key.size()));
  }
  std::copy_n(bytes.begin(), key.size(), reinterpret_cast<char*>(key.data()));
  return key;
}

}  // namespace orlune
