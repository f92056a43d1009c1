#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>

namespace orlune {

/// Credentials that were right a short while ago. A client sends its own with each request; checking a
/// password takes long on purpose, and only once in a while with this. Thread-safe.
class RecentLogins {
 public:
  using Clock = std::chrono::steady_clock;
  using TimeSource = std::function<Clock::time_point()>;

  explicit RecentLogins(TimeSource now = Clock::now) : now_(std::move(now)) {}

  /// The stamp that was remembered with the key. Nothing when that was never, or too long ago.
  std::optional<std::string> Find(const std::string& key);
  /// `key` is a digest of the credentials; `stamp` tells, once it is another one, that they are to be checked
  /// again.
  void Remember(const std::string& key, std::string stamp);

  /// To be held while credentials are checked: a client that opens several connections at once has its
  /// password checked once, and the others find it remembered.
  std::unique_lock<std::mutex> TurnOf(const std::string& key);

 private:
  static constexpr std::chrono::minutes kFor{10};
  static constexpr std::size_t kMost = 10'000;

  struct Entry {
    std::string Stamp;
    Clock::time_point Until;
  };

  const TimeSource now_;
  std::mutex mutex_;
  std::unordered_map<std::string, Entry> entries_;
  std::array<std::mutex, 64> turns_;  ///< by a hash of the key
};

}  // namespace orlune
