#include "http/health_check.h"

#include <utility>

namespace orlune {

HealthCheck::HealthCheck(std::function<bool()> probe, HealthLimits limits)
    : probe_(std::move(probe)),
      limits_(limits),
      worker_([this](const std::stop_token& stop) { Work(stop); }) {}

bool HealthCheck::IsHealthy() {
  std::unique_lock lock(mutex_);
  if (Clock::now() < staleFrom_) return isHealthy_;
  if (!isProbing_) {
    isProbing_ = true;
    probeStart_ = Clock::now();
    asked_.notify_one();
  }
  const auto isFresh = [this, before = staleFrom_] { return staleFrom_ != before; };
  return answered_.wait_until(lock, probeStart_ + limits_.Timeout, isFresh) && isHealthy_;
}

void HealthCheck::Work(const std::stop_token& stop) {
  std::unique_lock lock(mutex_);
  while (asked_.wait(lock, stop, [this] { return isProbing_; })) {
    lock.unlock();
    const bool isHealthy = probe_();
    lock.lock();
    isHealthy_ = isHealthy;
    isProbing_ = false;
    staleFrom_ = Clock::now() + limits_.MaxAge;
    answered_.notify_all();
  }
}

}  // namespace orlune
