#pragma once

#include <sys/stat.h>

namespace orlune {

/// As long as it lives, the process makes files that nobody but their owner reads.
class PrivateFiles {
 public:
  PrivateFiles() : before_(umask(S_IRWXG | S_IRWXO)) {}
  PrivateFiles(const PrivateFiles&) = delete;
  PrivateFiles& operator=(const PrivateFiles&) = delete;
  ~PrivateFiles() { umask(before_); }

 private:
  mode_t before_;
};

}  // namespace orlune
