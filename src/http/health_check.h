#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace orlune {

struct HealthLimits {
  std::chrono::milliseconds MaxAge{1000};   ///< how long the result of a probe is reused
  std::chrono::milliseconds Timeout{1000};  ///< of a probe
};

/// Whether the server can work. All who ask share one probe, which runs on a thread of its own, only when
/// somebody asks. May be used by several threads at once.
class HealthCheck {
 public:
  /// `probe` is true when all is well; it does not throw, and may hang.
  explicit HealthCheck(std::function<bool()> probe, HealthLimits limits = {});
  HealthCheck(const HealthCheck&) = delete;
  HealthCheck& operator=(const HealthCheck&) = delete;
  /// Waits for a running probe.
  ~HealthCheck() = default;

  /// The result of a probe that ended within `MaxAge`; false when a probe exceeds `Timeout`.
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
  Clock::time_point probeStart_;
  Clock::time_point staleFrom_;
  std::jthread worker_;
};

}  // namespace orlune
