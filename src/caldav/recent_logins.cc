#include "caldav/recent_logins.h"

#include <utility>

namespace orlune {

std::optional<std::string> RecentLogins::Find(const std::string& key) {
  const std::lock_guard lock(mutex_);
  const auto found = entries_.find(key);
  if (found == entries_.end()) return std::nullopt;
  if (found->second.Until > now_()) return found->second.Stamp;
  entries_.erase(found);
  return std::nullopt;
}

void RecentLogins::Remember(const std::string& key, std::string stamp) {
  const std::lock_guard lock(mutex_);
  const auto now = now_();
  if (entries_.size() >= kMost)
    std::erase_if(entries_, [now](const auto& entry) { return entry.second.Until <= now; });
  if (entries_.size() >= kMost) entries_.clear();
  entries_.insert_or_assign(key, Entry{std::move(stamp), now + kFor});
}

std::unique_lock<std::mutex> RecentLogins::TurnOf(const std::string& key) {
  return std::unique_lock(turns_[std::hash<std::string>()(key) % turns_.size()]);
}

}  // namespace orlune
