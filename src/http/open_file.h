#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>

#include "base/civil_time.h"

namespace orlune {

/// Tells a file from what it was before a change.
struct FileState {
  std::uint64_t Inode = 0;
  std::size_t Size = 0;
  std::chrono::sys_time<std::chrono::nanoseconds> ModifiedAt;

  bool operator==(const FileState&) const = default;
};

/// A regular file open for reading; closed with the object.
class OpenFile {
 public:
  /// Nothing when `path` is missing, a symbolic link or not a regular file.
  static std::optional<OpenFile> Open(const std::filesystem::path& path);

  OpenFile(OpenFile&& other) noexcept;
  OpenFile& operator=(OpenFile&& other) noexcept;
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;
  ~OpenFile();

  /// When it was opened.
  const FileState& State() const { return state_; }
  /// Its bytes; nothing when it has changed since it was opened, or cannot be read.
  std::optional<std::string> Read() const;
  /// Hands the descriptor over; the caller closes it.
  int Release() { return std::exchange(descriptor_, -1); }

 private:
  explicit OpenFile(int descriptor) : descriptor_(descriptor) {}

  int descriptor_;
  FileState state_;
};

}  // namespace orlune
