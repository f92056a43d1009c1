#include "sessions/memory_session_store.h"

#include <algorithm>
#include <utility>

#include "sessions/session_identifier.h"

namespace orlune {

MemorySessionStore::MemorySessionStore(std::chrono::seconds lifetime, std::size_t capacity, TimeSource now)
    : lifetime_(lifetime), capacity_(std::max<std::size_t>(capacity, 4)), now_(std::move(now)) {}

std::optional<KeptSession> MemorySessionStore::Find(std::span<const std::string_view> candidates) {
  const std::lock_guard lock(mutex_);
  RemoveExpired(users_);
  RemoveExpired(anonymous_);
  for (const std::string_view id : candidates) {
    const auto found = byId_.find(id);
    if (found == byId_.end()) continue;
    const Entries::iterator entry = found->second;
    Entries& entries = EntriesOf(entry->Login);
    entries.splice(entries.begin(), entries, entry);
    entry->ExpiresAt = now_() + lifetime_;
    return KeptSession{entry->Id, entry->Values};
  }
  return std::nullopt;
}

std::string MemorySessionStore::Start(const NamedTexts& values, std::string_view endedId) {
  if (!endedId.empty()) End(endedId);
  std::string id = NewSessionIdentifier();
  const std::string login(values.Find(kLoginKey));
  const std::lock_guard lock(mutex_);
  Entries& entries = EntriesOf(login);
  RemoveExpired(entries);
  if (!login.empty()) RemoveLeastUsedOf(login);
  const std::size_t most = login.empty() ? capacity_ / 4 : capacity_;
  if (entries.size() >= most) Remove(std::prev(entries.end()));
  entries.push_front({id, login, values, now_() + lifetime_});
  byId_.emplace(entries.front().Id, entries.begin());
  if (!login.empty()) byLogin_[login].push_back(entries.begin());
  return id;
}

void MemorySessionStore::Change(const KeptSession& found, const NamedTexts& changes) {
  const std::lock_guard lock(mutex_);
  const auto entry = byId_.find(found.Id);
  if (entry != byId_.end()) ApplyChanges(changes, entry->second->Values);
}

void MemorySessionStore::End(std::string_view id) {
  const std::lock_guard lock(mutex_);
  const auto found = byId_.find(id);
  if (found != byId_.end()) Remove(found->second);
}

std::size_t MemorySessionStore::size() {
  const std::lock_guard lock(mutex_);
  return byId_.size();
}

void MemorySessionStore::RemoveExpired(Entries& entries) {
  const auto now = now_();
  while (!entries.empty() && entries.back().ExpiresAt <= now) Remove(std::prev(entries.end()));
}

/// Makes room for one more session of the user.
void MemorySessionStore::RemoveLeastUsedOf(const std::string& login) {
  const auto own = byLogin_.find(login);
  if (own == byLogin_.end() || own->second.size() < kMaxSessionsOfLogin) return;
  Remove(
      *std::ranges::min_element(own->second, {}, [](Entries::iterator entry) { return entry->ExpiresAt; }));
}

void MemorySessionStore::Remove(Entries::iterator entry) {
  byId_.erase(entry->Id);
  if (!entry->Login.empty()) {
    const auto own = byLogin_.find(entry->Login);
    std::erase(own->second, entry);
    if (own->second.empty()) byLogin_.erase(own);
  }
  EntriesOf(entry->Login).erase(entry);
}

}  // namespace orlune
