#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <functional>
#include <list>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>

#include "sessions/session_store.h"

namespace orlune {

/// Keeps sessions in memory: they end with the process. Beyond its capacity it evicts the least recently used
/// one. Never throws DatabaseError.
class MemorySessionStore : public SessionStore {
 public:
  using TimeSource = std::function<std::chrono::steady_clock::time_point()>;

  /// At most about `capacity` sessions are kept.
  MemorySessionStore(std::chrono::seconds lifetime, std::size_t capacity,
                     TimeSource now = std::chrono::steady_clock::now);

  std::optional<KeptSession> Find(std::span<const std::string_view> candidates) override;
  std::string Start(const NamedTexts& values, std::string_view endedId) override;
  void Change(const KeptSession& found, const NamedTexts& changes) override;
  void End(std::string_view id) override;

  /// How many sessions are kept, those included that have expired but are not removed yet.
  std::size_t size();

 private:
  static constexpr std::size_t kShardCount = 16;
  struct Entry {
    std::string Id;
    NamedTexts Values;
    std::chrono::steady_clock::time_point ExpiresAt;
  };
  struct Shard {
    std::mutex Mutex;
    std::list<Entry> Entries;  // the most recently used first, hence the first to expire last
    std::unordered_map<std::string_view, std::list<Entry>::iterator> ById;
  };

  std::optional<KeptSession> FindOne(std::string_view id);
  Shard& ShardOf(std::string_view id);
  void RemoveExpired(Shard& shard);
  static void Remove(Shard& shard, std::list<Entry>::iterator entry);

  std::chrono::seconds lifetime_;
  std::size_t shardCapacity_;
  TimeSource now_;
  std::array<Shard, kShardCount> shards_;
};

}  // namespace orlune
