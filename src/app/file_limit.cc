#include "app/file_limit.h"

#include <algorithm>

#include <sys/resource.h>

namespace orlune {

std::size_t RaiseFileLimit() {
  rlimit limit{};
  if (getrlimit(RLIMIT_NOFILE, &limit) != 0) return 0;
  limit.rlim_cur = limit.rlim_max;
  if (setrlimit(RLIMIT_NOFILE, &limit) != 0) getrlimit(RLIMIT_NOFILE, &limit);
  return limit.rlim_cur;
}

std::size_t DescriptorsForConnections(std::size_t descriptors) {
  constexpr std::size_t kForFilesAndDatabases = 512;
  return descriptors - std::min(kForFilesAndDatabases, descriptors / 2);
}

}  // namespace orlune
