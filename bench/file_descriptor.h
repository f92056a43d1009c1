#pragma once

#include <utility>

#include <unistd.h>

namespace orlune::bench {

/// Closes an open file or socket when destroyed.
class FileDescriptor {
 public:
  explicit FileDescriptor(int number = -1) : number_(number) {}
  ~FileDescriptor() {
    if (number_ >= 0) close(number_);
  }
  FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }

  int Number() const { return number_; }

 private:
  int number_;
};

}  // namespace orlune::bench
