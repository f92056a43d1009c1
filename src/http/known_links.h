#pragma once

#include <chrono>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>

#include "http/static_files.h"

namespace orlune {

/// Knows which links of hosting pages lead to a file of the site. Looks into the folder for each link once a
/// second at most, so that a page needs no call of the file system. May be used by several threads at once.
class KnownLinks {
 public:
  /// `files` outlives this.
  explicit KnownLinks(const StaticFiles& files) : files_(files) {}

  /// Whether `link` on the page at `pagePath` leads to a file; at `now`, or up to a second before.
  bool IsServed(std::string_view pagePath, std::string_view link, std::chrono::steady_clock::time_point now);

 private:
  struct Answer {
    bool IsServed;
    std::chrono::steady_clock::time_point FoundAt;
  };

  const StaticFiles& files_;
  std::mutex mutex_;
  std::unordered_map<std::string, Answer> answers_;  ///< by page and link
};

}  // namespace orlune
