#include "http/open_file.h"

#include <chrono>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orlune {

namespace {

/// Nothing when the descriptor is no regular file's.
std::optional<FileState> StateOf(int descriptor) {
  struct stat status {};
  if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  FileState state{status.st_ino, static_cast<std::size_t>(status.st_size), {}};
  state.ModifiedAt +=
      std::chrono::seconds(status.st_mtim.tv_sec) + std::chrono::nanoseconds(status.st_mtim.tv_nsec);
  return state;
}

}  // namespace

std::optional<OpenFile> OpenFile::Open(const std::filesystem::path& path) {
  OpenFile file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
  const std::optional<FileState> state = StateOf(file.descriptor_);
  if (!state) return std::nullopt;
  file.state_ = *state;
  return file;
}

OpenFile::OpenFile(OpenFile&& other) noexcept : descriptor_(other.Release()), state_(other.state_) {}

OpenFile& OpenFile::operator=(OpenFile&& other) noexcept {
  std::swap(descriptor_, other.descriptor_);
  state_ = other.state_;
  return *this;
}

std::optional<std::string> OpenFile::Read() const {
  std::string text(state_.Size, '\0');
  std::size_t size = 0;
  while (size < text.size()) {
    const ssize_t count =
        pread(descriptor_, text.data() + size, text.size() - size, static_cast<off_t>(size));
    if (count <= 0) return std::nullopt;
    size += static_cast<std::size_t>(count);
  }
  return StateOf(descriptor_) == state_ ? std::optional(std::move(text)) : std::nullopt;
}

OpenFile::~OpenFile() {
  if (descriptor_ >= 0) close(descriptor_);
}

}  // namespace orlune
