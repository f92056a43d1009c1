#pragma once

#include <cstddef>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace orlune::dialect {

/// The statements of one database by their shape keys; keeps those used last.
template <class CachedStatement>
class StatementCache {
 public:
  /// The statement of that shape, or null. It becomes the one used last.
  std::shared_ptr<CachedStatement> Find(std::string_view key) {
    const auto found = byKey_.find(key);
    if (found == byKey_.end()) return nullptr;
    entries_.splice(entries_.begin(), entries_, found->second);
    return found->second->Statement;
  }

  /// Returns the statement that it evicted, or null.
  std::shared_ptr<CachedStatement> Add(std::string key, std::shared_ptr<CachedStatement> statement) {
    std::shared_ptr<CachedStatement> displaced;
    if (entries_.size() == kMostStatements) {
      displaced = std::move(entries_.back().Statement);
      byKey_.erase(entries_.back().Key);
      entries_.pop_back();
    }
    entries_.push_front({std::move(key), std::move(statement)});
    byKey_.emplace(entries_.front().Key, entries_.begin());
    return displaced;
  }

  void Clear() {
    byKey_.clear();
    entries_.clear();
  }

 private:
  static constexpr std::size_t kMostStatements = 256;
  struct Entry {
    std::string Key;
    std::shared_ptr<CachedStatement> Statement;
  };

  std::list<Entry> entries_;  // the one used last first
  std::unordered_map<std::string_view, typename std::list<Entry>::iterator> byKey_;
};

}  // namespace orlune::dialect
