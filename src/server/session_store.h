#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>

#include "server/named_texts.h"

namespace orlune {

/// The values of one session.
struct SessionValues {
  std::mutex Mutex;  ///< guards `Values`
  NamedTexts Values;
};

/// The running sessions of all hosting pages, in memory. One that is not asked for during its lifetime ends;
/// when there are too many, the one that was asked for longest ago ends first. May be used by several threads
/// at once.
class SessionStore {
 public:
  using TimeSource = std::function<std::chrono::steady_clock::time_point()>;

  /// At most about `capacity` sessions are kept.
  SessionStore(std::chrono::seconds lifetime, std::size_t capacity,
               TimeSource now = std::chrono::steady_clock::now);

  /// The session that has the identifier `id` at the page, its lifetime begun anew; null when there is none.
  std::shared_ptr<SessionValues> Find(std::string_view pagePath, std::string_view id);
  /// Puts the values under a new identifier that nobody can guess, and returns it.
  std::string Start(std::string_view pagePath, std::shared_ptr<SessionValues> values);
  /// The identifier leads nowhere from now on.
  void End(std::string_view pagePath, std::string_view id);
  /// How many sessions are kept, those included that have expired but are not swept yet.
  std::size_t size();

 private:
  static constexpr std::size_t kShardCount = 16;
  struct Entry {
    std::string Key;
    std::shared_ptr<SessionValues> Values;
    std::chrono::steady_clock::time_point ExpiresAt;
  };
  struct Shard {
    std::mutex Mutex;
    std::list<Entry> Entries;  // the one used last in front, hence the first to expire at the back
    std::unordered_map<std::string_view, std::list<Entry>::iterator> ByKey;
  };

  Shard& ShardOf(std::string_view key);
  void Sweep(Shard& shard);
  static void Remove(Shard& shard, std::list<Entry>::iterator entry);

  std::chrono::seconds lifetime_;
  std::size_t shardCapacity_;
  TimeSource now_;
  std::array<Shard, kShardCount> shards_;
};

}  // namespace orlune
