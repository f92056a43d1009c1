#include "http/open_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orlune {

std::optional<OpenFile> OpenFile::Open(const std::filesystem::path& path) {
  OpenFile file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
  struct stat status {};
  if (file.descriptor_ < 0 || fstat(file.descriptor_, &status) != 0 || !S_ISREG(status.st_mode))
    return std::nullopt;
  file.size_ = static_cast<std::size_t>(status.st_size);
  file.modifiedAt_ +=
      std::chrono::seconds(status.st_mtim.tv_sec) + std::chrono::nanoseconds(status.st_mtim.tv_nsec);
  return file;
}

OpenFile::OpenFile(OpenFile&& other) noexcept
    : descriptor_(other.Release()), size_(other.size_), modifiedAt_(other.modifiedAt_) {}

OpenFile& OpenFile::operator=(OpenFile&& other) noexcept {
  std::swap(descriptor_, other.descriptor_);
  size_ = other.size_;
  modifiedAt_ = other.modifiedAt_;
  return *this;
}

OpenFile::~OpenFile() {
  if (descriptor_ >= 0) close(descriptor_);
}

}  // namespace orlune
