#include "app/secret_key_file.h"

#include <algorithm>
#include <cerrno>
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

// The key gets its name when it is complete, so that of several servers that start at once all read the first
// one's.
void CreateSecretKey(const fs::path& file) {
  std::error_code ignored;
  fs::create_directories(file.parent_path(), ignored);
  SecretKey key;
  randombytes_buf(key.data(), key.size());
  const fs::path unnamed = fmt::format("{}.{}", file.string(), getpid());
  const int descriptor = open(unnamed.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  const bool isWritten = descriptor >= 0 && write(descriptor, key.data(), key.size()) == std::ssize(key);
  if (descriptor >= 0) close(descriptor);
  const bool isNamed = isWritten && (link(unnamed.c_str(), file.c_str()) == 0 || errno == EEXIST);
  fs::remove(unnamed, ignored);
  if (!isNamed) throw ConfigurationError(fmt::format("cannot write a key to secret_file {}", file.string()));
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
