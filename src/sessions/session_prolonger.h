#pragma once

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <thread>
#include <unordered_map>

#include "sessions/session_table.h"

namespace orlune {

/// Restarts the lifetimes of the sessions of one database on a thread of its own, so that nobody who reads
/// waits for a writer. Thread-safe.
class SessionProlonger {
 public:
  /// The database's driver outlives the prolonger.
  explicit SessionProlonger(SessionDatabase database);
  SessionProlonger(const SessionProlonger&) = delete;
  SessionProlonger& operator=(const SessionProlonger&) = delete;
  /// Writes what is waiting.
  ~SessionProlonger() = default;

  /// Sets the moment of expiry of the row `key`, soon. A failure is no error: the session only expires
  /// earlier.
  void Prolong(const std::string& key, std::int64_t expiresAt);

 private:
  using Expiries = std::unordered_map<std::string, std::int64_t>;

  void Work(const std::stop_token& stop);
  void Write(const Expiries& expiries) const;

  const SessionDatabase database_;
  std::mutex mutex_;
  std::condition_variable_any added_;
  Expiries waiting_;  // by key
  std::jthread thread_;
};

}  // namespace orlune
