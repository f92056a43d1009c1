#include "http/known_links.h"

namespace orlune {
namespace {

constexpr std::chrono::seconds kLifetime{1};
/// There are as many links as colour schemes; an administrator may name new ones again and again.
constexpr std::size_t kMostAnswers = 1000;

}  // namespace

bool KnownLinks::IsServed(std::string_view pagePath, std::string_view link,
                          std::chrono::steady_clock::time_point now) {
  std::string key(pagePath);
  key.append(1, ' ').append(link);
  {
    const std::lock_guard lock(mutex_);
    const auto known = answers_.find(key);
    if (known != answers_.end() && now - known->second.FoundAt < kLifetime) return known->second.IsServed;
  }
  const bool isServed = !files_.FindLinked(pagePath, link).empty();
  const std::lock_guard lock(mutex_);
  if (answers_.size() >= kMostAnswers) answers_.clear();
  answers_.insert_or_assign(std::move(key), Answer{isServed, now});
  return isServed;
}

}  // namespace orlune
