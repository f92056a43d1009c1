#pragma once

#include <chrono>
#include <functional>
#include <thread>

namespace orlune {

/// A task that runs again and again in a thread of its own, with pauses of random length: so several servers
/// of a database do not run theirs at the same moment. Destruction waits for a running one.
class RepeatedTask {
 public:
  /// `meanPause` is exceeded or undercut by up to a half. The task comes first after a pause; it must not
  /// throw.
  RepeatedTask(std::chrono::milliseconds meanPause, std::function<void()> task);

 private:
  std::jthread thread_;
};

}  // namespace orlune
