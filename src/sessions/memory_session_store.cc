#include "sessions/memory_session_store.h"

#include <algorithm>
#include <utility>

#include "sessions/session_identifier.h"

namespace orlune {
namespace {

std::string KeyOf(std::string_view pagePath, std::string_view id) {
  return std::string(pagePath).append(1, '\0').append(id);
}

}  // namespace

MemorySessionStore::MemorySessionStore(std::chrono::seconds lifetime, std::size_t capacity, TimeSource now)
    : lifetime_(lifetime),
      shardCapacity_(std::max<std::size_t>(capacity / kShardCount, 1)),
      now_(std::move(now)) {}

std::optional<KeptSession> MemorySessionStore::Find(std::string_view pagePath,
                                                    std::span<const std::string_view> candidates) {
  for (const std::string_view candidate : candidates) {
    if (auto found = FindOne(pagePath, candidate)) return found;
  }
  return std::nullopt;
}

std::optional<KeptSession> MemorySessionStore::FindOne(std::string_view pagePath, std::string_view id) {
  const std::string key = KeyOf(pagePath, id);
  Shard& shard = ShardOf(key);
  const std::lock_guard lock(shard.Mutex);
  Sweep(shard);
  const auto found = shard.ByKey.find(key);
  if (found == shard.ByKey.end()) return std::nullopt;
  shard.Entries.splice(shard.Entries.begin(), shard.Entries, found->second);
  found->second->ExpiresAt = now_() + lifetime_;
  return KeptSession{std::string(id), found->second->Values};
}

std::string MemorySessionStore::Start(std::string_view pagePath, const NamedTexts& values,
                                      std::string_view endedId) {
  if (!endedId.empty()) End(pagePath, endedId);
  std::string id = NewSessionIdentifier();
  std::string key = KeyOf(pagePath, id);
  Shard& shard = ShardOf(key);
  const std::lock_guard lock(shard.Mutex);
  Sweep(shard);
  if (shard.Entries.size() >= shardCapacity_) Remove(shard, std::prev(shard.Entries.end()));
  shard.Entries.push_front({std::move(key), values, now_() + lifetime_});
  shard.ByKey.emplace(shard.Entries.front().Key, shard.Entries.begin());
  return id;
}

void MemorySessionStore::Change(std::string_view pagePath, const KeptSession& found,
                                const NamedTexts& changes) {
  const std::string key = KeyOf(pagePath, found.Id);
  Shard& shard = ShardOf(key);
  const std::lock_guard lock(shard.Mutex);
  const auto entry = shard.ByKey.find(key);
  if (entry != shard.ByKey.end()) ApplyChanges(changes, entry->second->Values);
}

void MemorySessionStore::End(std::string_view pagePath, std::string_view id) {
  const std::string key = KeyOf(pagePath, id);
  Shard& shard = ShardOf(key);
  const std::lock_guard lock(shard.Mutex);
  const auto found = shard.ByKey.find(key);
  if (found != shard.ByKey.end()) Remove(shard, found->second);
}

std::size_t MemorySessionStore::size() {
  std::size_t total = 0;
  for (Shard& shard : shards_) {
    const std::lock_guard lock(shard.Mutex);
    total += shard.Entries.size();
  }
  return total;
}

MemorySessionStore::Shard& MemorySessionStore::ShardOf(std::string_view key) {
  return shards_[std::hash<std::string_view>()(key) % shards_.size()];
}

void MemorySessionStore::Sweep(Shard& shard) {
  const auto now = now_();
  while (!shard.Entries.empty() && shard.Entries.back().ExpiresAt <= now)
    Remove(shard, std::prev(shard.Entries.end()));
}

void MemorySessionStore::Remove(Shard& shard, std::list<Entry>::iterator entry) {
  shard.ByKey.erase(entry->Key);
  shard.Entries.erase(entry);
}

}  // namespace orlune
