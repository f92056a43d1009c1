#include "server/session_store.h"

#include <algorithm>

#include <sodium.h>

namespace orlune {
namespace {

std::string NewIdentifier() {
  std::array<unsigned char, 16> bytes;
  randombytes_buf(bytes.data(), bytes.size());
  std::string text(2 * bytes.size() + 1, '\0');
  sodium_bin2hex(text.data(), text.size(), bytes.data(), bytes.size());
  text.pop_back();
  return text;
}

std::string KeyOf(std::string_view pagePath, std::string_view id) {
  return std::string(pagePath).append(1, '\0').append(id);
}

}  // namespace

SessionStore::SessionStore(std::chrono::seconds lifetime, std::size_t capacity, TimeSource now)
    : lifetime_(lifetime),
      shardCapacity_(std::max<std::size_t>(capacity / kShardCount, 1)),
      now_(std::move(now)) {}

std::shared_ptr<SessionValues> SessionStore::Find(std::string_view pagePath, std::string_view id) {
  const std::string key = KeyOf(pagePath, id);
  Shard& shard = ShardOf(key);
  const std::lock_guard lock(shard.Mutex);
  Sweep(shard);
  const auto found = shard.ByKey.find(key);
  if (found == shard.ByKey.end()) return nullptr;
  shard.Entries.splice(shard.Entries.begin(), shard.Entries, found->second);
  found->second->ExpiresAt = now_() + lifetime_;
  return found->second->Values;
}

std::string SessionStore::Start(std::string_view pagePath, std::shared_ptr<SessionValues> values) {
  std::string id = NewIdentifier();
  std::string key = KeyOf(pagePath, id);
  Shard& shard = ShardOf(key);
  const std::lock_guard lock(shard.Mutex);
  Sweep(shard);
  if (shard.Entries.size() >= shardCapacity_) Remove(shard, std::prev(shard.Entries.end()));
  shard.Entries.push_front({std::move(key), std::move(values), now_() + lifetime_});
  shard.ByKey.emplace(shard.Entries.front().Key, shard.Entries.begin());
  return id;
}

void SessionStore::End(std::string_view pagePath, std::string_view id) {
  const std::string key = KeyOf(pagePath, id);
  Shard& shard = ShardOf(key);
  const std::lock_guard lock(shard.Mutex);
  const auto found = shard.ByKey.find(key);
  if (found != shard.ByKey.end()) Remove(shard, found->second);
}

std::size_t SessionStore::size() {
  std::size_t total = 0;
  for (Shard& shard : shards_) {
    const std::lock_guard lock(shard.Mutex);
    total += shard.Entries.size();
  }
  return total;
}

SessionStore::Shard& SessionStore::ShardOf(std::string_view key) {
  return shards_[std::hash<std::string_view>()(key) % shards_.size()];
}

void SessionStore::Sweep(Shard& shard) {
  const auto now = now_();
  while (!shard.Entries.empty() && shard.Entries.back().ExpiresAt <= now)
    Remove(shard, std::prev(shard.Entries.end()));
}

void SessionStore::Remove(Shard& shard, std::list<Entry>::iterator entry) {
  shard.ByKey.erase(entry->Key);
  shard.Entries.erase(entry);
}

}  // namespace orlune
