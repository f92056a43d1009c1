#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace orlune {

/// How old an answer of a health check may be, and how long it may take.
struct HealthLimits {
  std::chrono::milliseconds Freshness{1000};
  std::chrono::milliseconds Patience{1000};
};

/// Tells whether the server can work, to as many as ask and as often as they do: a probe finds it out for all
/// of them, on a thread of its own, one at a time and only when somebody asks. May be used by several threads
/// at once.
class HealthCheck {
 public:
  /// `probe` is true when all is well; it does not throw. It may take any time.
  explicit HealthCheck(std::function<bool()> probe, HealthLimits limits = {});
  HealthCheck(const HealthCheck&) = delete;
  HealthCheck& operator=(const HealthCheck&) = delete;
  /// Waits for a running probe.
  ~HealthCheck() = default;

  /// What a probe found that ended no longer than `Freshness` ago; false when one has not come to an end
  /// `Patience` after its beginning.
  bool IsHealthy();

 private:
  using Clock = std::chrono::steady_clock;

  void Work(const std::stop_token& stop);

  const std::function<bool()> probe_;
  const HealthLimits limits_;
  std::mutex mutex_;
  std::condition_variable_any asked_;
  std::condition_variable answered_;
  bool isProbing_ = false;
  bool isHealthy_ = false;
  Clock::time_point begun_;
  Clock::time_point staleFrom_;
  std::jthread worker_;
};

}  // namespace orlune
