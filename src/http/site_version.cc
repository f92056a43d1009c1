#include "http/site_version.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <system_error>

#include <fmt/format.h>
#include <gnutls/crypto.h>

namespace orlune {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kPrefix = "v-";
constexpr std::size_t kDigits = 10;

std::string Sha256(std::string_view text) {
  std::array<unsigned char, 32> digest{};
  gnutls_hash_fast(GNUTLS_DIG_SHA256, text.data(), text.size(), digest.data());
  std::string digits;
  for (const unsigned char byte : digest) digits += fmt::format("{:02x}", byte);
  return digits;
}

/// The regular files below `folder` in the order of their names; no hidden ones and no symbolic links.
std::map<std::string, fs::path> FilesBelow(const fs::path& folder) {
  std::map<std::string, fs::path> files;
  std::error_code error;
  fs::recursive_directory_iterator entry(folder, fs::directory_options::skip_permission_denied, error);
  for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
    if (entry->path().filename().native().starts_with('.')) {
      entry.disable_recursion_pending();
    } else if (fs::is_regular_file(entry->symlink_status(error))) {
      files[entry->path().lexically_relative(folder).generic_string()] = entry->path();
    }
  }
  return files;
}

}  // namespace

SiteVersion::SiteVersion(const fs::path& folder) {
  std::string contents;
  for (const auto& [name, path] : FilesBelow(folder)) {
    const std::optional<OpenFile> file = OpenFile::Open(path);
    const std::optional<std::string> text = file ? file->Read() : std::nullopt;
    if (!text) continue;
    contents.append(name).append(1, '\0').append(Sha256(*text));
    files_[path.native()] = file->State();
  }
  name_ = std::string(kPrefix) + Sha256(contents).substr(0, kDigits);
}

bool SiteVersion::Holds(const fs::path& file, const FileState& state) const {
  const auto found = files_.find(file.native());
  return found != files_.end() && found->second == state;
}

VersionedPath SplitVersion(std::string_view path) {
  constexpr std::size_t kSize = kPrefix.size() + kDigits;
  const std::string_view folder = path.substr(std::min<std::size_t>(path.size(), 1), kSize);
  const std::string_view rest = path.substr(std::min(path.size(), 1 + kSize));
  const bool isVersion =
      path.starts_with('/') && folder.starts_with(kPrefix) && rest.starts_with('/') &&
      folder.find_first_not_of("0123456789abcdef", kPrefix.size()) == std::string_view::npos;
  return isVersion ? VersionedPath{folder, rest} : VersionedPath{{}, path};
}

}  // namespace orlune
