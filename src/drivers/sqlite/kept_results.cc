#include "drivers/sqlite/kept_results.h"

#include <utility>

namespace orlune::sqlite {

namespace {

/// What the list, the map with its buckets, the counts of references and the allocations themselves take for
/// one entry.
constexpr std::size_t kOverhead = 200;

}  // namespace

std::shared_ptr<const RowBlock> KeptResults::Find(std::string_view key, const FileState& state) {
  const std::lock_guard lock(mutex_);
  const auto found = byKey_.find(key);
  if (found == byKey_.end()) return nullptr;
  const auto entry = found->second;
  if (entry->LastChange != state.LastChange(entry->Tables)) return nullptr;
  entries_.splice(entries_.begin(), entries_, entry);
  return entry->Rows;
}

void KeptResults::Keep(std::string_view key, TableSet tables, const FileState& state,
                       std::shared_ptr<const RowBlock> rows) {
  Entries added;
  added.push_back({std::string(key), tables, state.LastChange(tables), std::move(rows)});
  const std::size_t bytes = BytesOf(added.front());
  if (bytes > MostBytesOfOne()) return;
  const std::lock_guard lock(mutex_);
  if (const auto found = byKey_.find(key); found != byKey_.end()) {
    // Requests that began earlier may still read the state before.
    if (found->second->LastChange >= added.front().LastChange) return;
    Remove(found->second);
  }
  while (bytes_ + bytes > mostBytes_) Remove(std::prev(entries_.end()));
  entries_.splice(entries_.begin(), added);
  byKey_.emplace(entries_.front().Key, entries_.begin());
  bytes_ += bytes;
}

std::size_t KeptResults::Bytes() const {
  const std::lock_guard lock(mutex_);
  return bytes_;
}

std::size_t KeptResults::BytesOf(const Entry& entry) {
  return kOverhead + sizeof(Entry) + entry.Key.capacity() + entry.Rows->Bytes();
}

void KeptResults::Remove(Entries::iterator entry) {
  bytes_ -= BytesOf(*entry);
  byKey_.erase(entry->Key);
  entries_.erase(entry);
}

}  // namespace orlune::sqlite
