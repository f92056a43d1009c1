#pragma once

#include <chrono>
#include <csignal>
#include <functional>

namespace orlune {

/// SIGTERM and SIGINT, which end the server, and SIGHUP, which has it read its certificate anew. Blocked from
/// construction on, in this thread and all started later, until waited for.
class StopSignals {
 public:
  StopSignals();
  /// Returns when the server is to end; calls `reload` meanwhile.
  void Wait(const std::function<void()>& reload) const;
  /// Returns after `limit` at the latest.
  void WaitFor(std::chrono::seconds limit) const;

 private:
  sigset_t stopping_{};
  sigset_t all_{};
};

}  // namespace orlune
