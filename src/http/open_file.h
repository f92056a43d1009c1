#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <utility>

#include "base/civil_time.h"

namespace orlune {

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

  std::size_t size() const { return size_; }
  std::chrono::sys_time<std::chrono::nanoseconds> ModifiedAt() const { return modifiedAt_; }
  /// Hands the descriptor over; the caller closes it.
  int Release() { return std::exchange(descriptor_, -1); }

 private:
  explicit OpenFile(int descriptor) : descriptor_(descriptor) {}

  int descriptor_;
  std::size_t size_ = 0;
  std::chrono::sys_time<std::chrono::nanoseconds> modifiedAt_;
};

}  // namespace orlune
