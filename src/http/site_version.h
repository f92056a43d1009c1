#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_map>

#include "http/open_file.h"

namespace orlune {

/// The state of a site folder at one moment: its files without hidden ones and symbolic links. Never changes.
class SiteVersion {
 public:
  /// Reads all files. `folder` is canonical.
  explicit SiteVersion(const std::filesystem::path& folder);

  /// "v-" and ten digits that depend on the names and contents of the files alone, so that several servers
  /// with the same files have the same.
  const std::string& Name() const { return name_; }
  /// Whether `file` is one of them, and was in this state.
  bool Holds(const std::filesystem::path& file, const FileState& state) const;

 private:
  std::unordered_map<std::string, FileState> files_;
  std::string name_;
};

/// The path of a URL whose first folder has the form of a version's name.
struct VersionedPath {
  std::string_view Version;  ///< "" when it has not
  std::string_view Path;     ///< the rest; begins with "/"
};

VersionedPath SplitVersion(std::string_view path);

}  // namespace orlune
