#pragma once

#include <chrono>
#include <vector>

#include "http/wake_up.h"

namespace orlune {

/// Tells which of many connected sockets the other side has closed, half or whole. May be used by several
/// threads at once.
class HangUps {
 public:
  /// Throws std::system_error.
  HangUps();
  ~HangUps();
  HangUps(const HangUps&) = delete;
  HangUps& operator=(const HangUps&) = delete;

  /// Watches `socket` until it is closed here.
  void Watch(int socket) const;
  /// Sockets that were closed by the other side, each reported about once; waits for the first one, `limit`
  /// at most, or until `Wake`. A socket may have been closed here, too, since it was noticed.
  std::vector<int> Await(std::chrono::milliseconds limit) const;
  void Wake() const { wakeUp_.Signal(); }

 private:
  WakeUp wakeUp_;
  int epoll_;
};

}  // namespace orlune
