#pragma once

#include <chrono>
#include <csignal>

namespace orlune {

/// SIGTERM and SIGINT, which end the server. Blocked from construction on, in this thread and all started
/// later, until waited for.
class StopSignals {
 public:
  StopSignals();
  void Wait() const;
  /// Returns after `limit` at the latest.
  void WaitFor(std::chrono::seconds limit) const;

 private:
  sigset_t signals_{};
};

}  // namespace orlune
