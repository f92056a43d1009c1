#include "sessions/memory_session_store.h"

#include <algorithm>
#include <utility>

#include "sessions/session_identifier.h"

namespace orlune {

MemorySessionStore::MemorySessionStore(std::chrono::seconds lifetime, std::size_t capacity, TimeSource now)
    : lifetime_(lifetime),
      shardCapacity_(std::max<std::size_t>(capacity / kShardCount, 1)),
      now_(std::move(now)) {}

std::optional<KeptSession> MemorySessionStore::Find(std::span<const std::string_view> candidates) {
  for (const std::string_view candidate : candidates) {
    if (auto found = FindOne(candidate)) return found;
  }
  return std::nullopt;
}

std::optional<KeptSession> MemorySessionStore::FindOne(std::string_view id) {
  Shard& shard = ShardOf(id);
  const std::lock_guard lock(shard.Mutex);
  RemoveExpired(shard);
  const auto found = shard.ById.find(id);
  if (found == shard.ById.end()) return std::nullopt;
  shard.Entries.splice(shard.Entries.begin(), shard.Entries, found->second);
  found->second->ExpiresAt = now_() + lifetime_;
  return KeptSession{std::string(id), found->second->Values};
}

std::string MemorySessionStore::Start(const NamedTexts& values, std::string_view endedId) {
  if (!endedId.empty()) End(endedId);
  std::string id = NewSessionIdentifier();
  Shard& shard = ShardOf(id);
  const std::lock_guard lock(shard.Mutex);
  RemoveExpired(shard);
  if (shard.Entries.size() >= shardCapacity_) Remove(shard, std::prev(shard.Entries.end()));
  shard.Entries.push_front({id, values, now_() + lifetime_});
  shard.ById.emplace(shard.Entries.front().Id, shard.Entries.begin());
  return id;
}

void MemorySessionStore::Change(const KeptSession& found, const NamedTexts& changes) {
  Shard& shard = ShardOf(found.Id);
  const std::lock_guard lock(shard.Mutex);
  const auto entry = shard.ById.find(found.Id);
  if (entry != shard.ById.end()) ApplyChanges(changes, entry->second->Values);
}

void MemorySessionStore::End(std::string_view id) {
  Shard& shard = ShardOf(id);
  const std::lock_guard lock(shard.Mutex);
  const auto found = shard.ById.find(id);
  if (found != shard.ById.end()) Remove(shard, found->second);
}

std::size_t MemorySessionStore::size() {
  std::size_t total = 0;
  for (Shard& shard : shards_) {
    const std::lock_guard lock(shard.Mutex);
    total += shard.Entries.size();
  }
  return total;
}

MemorySessionStore::Shard& MemorySessionStore::ShardOf(std::string_view id) {
  return shards_[std::hash<std::string_view>()(id) % shards_.size()];
}

void MemorySessionStore::RemoveExpired(Shard& shard) {
  const auto now = now_();
  while (!shard.Entries.empty() && shard.Entries.back().ExpiresAt <= now)
    Remove(shard, std::prev(shard.Entries.end()));
}

void MemorySessionStore::Remove(Shard& shard, std::list<Entry>::iterator entry) {
  shard.ById.erase(entry->Id);
  shard.Entries.erase(entry);
}

}  // namespace orlune
