#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <list>
#include <mutex>
#include <string>
#include <unordered_map>

#include <spdlog/logger.h>

#include "platform/login_guard.h"

namespace orlune {

struct LoginLimits {
  int TriesOfName = 5;      ///< failed logins to one account before the first pause
  int TriesOfAddress = 50;  ///< the same from one address, behind which a whole company may be
  std::chrono::seconds FirstPause{1};
  std::chrono::seconds LongestPause{15 * 60};
  std::chrono::seconds Memory{60 * 60};                  ///< until failures are forgotten
  std::chrono::seconds KnownFor{std::chrono::days(90)};  ///< until a place of login is forgotten
  std::size_t Entries = 100'000;                         ///< of names, addresses and places of login together
};

/// Limits failed logins by account and by address: past a number of failures each further one doubles the
/// pause (exponential back-off). An address from which somebody logged in to the account before is limited by
/// its own failures alone, so that an attack does not lock the owner out. Entries are in memory; the least
/// recently used are evicted.
class LoginLimiter : public LoginGuard {
 public:
  using Clock = std::chrono::steady_clock;
  using TimeSource = std::function<Clock::time_point()>;

  /// The log outlives the limiter; each failure is one line of it.
  explicit LoginLimiter(spdlog::logger& log, LoginLimits limits = {}, TimeSource now = Clock::now);

  std::chrono::seconds Admit(const LoginAttempt& attempt) override;
  void Failed(const LoginAttempt& attempt) override;
  void Succeeded(const LoginAttempt& attempt) override;

 private:
  /// What is known of an account, an address, or an account at an address.
  struct Entry {
    std::string Key;
    int Failures = 0;
    bool IsKnown = false;  ///< somebody logged in to the account from the address
    Clock::time_point PausedUntil;
    Clock::time_point ExpiresAt;
  };

  /// The entry, the most recently used from now on; null when there is none.
  Entry* Find(const std::string& key);
  Entry& FindOrAdd(const std::string& key);
  void Forget(const std::string& key);
  std::chrono::seconds PauseOf(const std::string& key);
  void Count(const std::string& key, int tries);

  spdlog::logger& log_;
  const LoginLimits limits_;
  const TimeSource now_;
  std::mutex mutex_;
  std::list<Entry> entries_;  ///< the most recently used first
  std::unordered_map<std::string_view, std::list<Entry>::iterator> byKey_;
};

}  // namespace orlune
