#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <list>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

#include "sessions/session_store.h"

namespace orlune {

/// Keeps sessions in memory: they end with the process. Beyond its capacity it evicts the least recently used
/// one. Never throws DatabaseError.
class MemorySessionStore : public SessionStore {
 public:
  using TimeSource = std::function<std::chrono::steady_clock::time_point()>;

  /// Keeps at most `capacity` sessions of users, and besides a quarter as many of visitors who did not log
  /// in.
  MemorySessionStore(std::chrono::seconds lifetime, std::size_t capacity,
                     TimeSource now = std::chrono::steady_clock::now);

  std::optional<KeptSession> Find(std::span<const std::string_view> candidates) override;
  std::string Start(const NamedTexts& values, std::string_view endedId) override;
  void Change(const KeptSession& found, const NamedTexts& changes) override;
  void End(std::string_view id) override;

  /// How many sessions are kept, those included that have expired but are not removed yet.
  std::size_t size();

 private:
  struct Entry {
    std::string Id;
    std::string Login;
    NamedTexts Values;
    std::chrono::steady_clock::time_point ExpiresAt;
  };
  /// The most recently used first, hence the first to expire last.
  using Entries = std::list<Entry>;

  Entries& EntriesOf(std::string_view login) { return login.empty() ? anonymous_ : users_; }
  void RemoveExpired(Entries& entries);
  void RemoveLeastUsedOf(const std::string& login);
  void Remove(Entries::iterator entry);

  const std::chrono::seconds lifetime_;
  const std::size_t capacity_;
  const TimeSource now_;
  std::mutex mutex_;
  Entries users_;
  Entries anonymous_;
  std::unordered_map<std::string_view, Entries::iterator> byId_;
  std::unordered_map<std::string, std::vector<Entries::iterator>> byLogin_;  ///< of `users_`
};

}  // namespace orlune
