#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <list>
#include <mutex>
#include <thread>

namespace orlune {

/// Cuts off connections that take too long as a whole, however busy they keep. Its own thread looks through
/// the connections several times within the shortest limit. May be used by several threads at once.
class ConnectionWatch {
 public:
  using Clock = std::chrono::steady_clock;

  /// A connection under watch.
  struct Watched {
    Watched(int socket, Clock::time_point deadline) : Socket(socket), Deadline(deadline) {}
    int Socket;
    std::atomic<Clock::time_point> Deadline;
  };

  /// `period` is the time between two looks.
  explicit ConnectionWatch(std::chrono::milliseconds period);
  ConnectionWatch(const ConnectionWatch&) = delete;
  ConnectionWatch& operator=(const ConnectionWatch&) = delete;

  /// Watches a socket until `Remove`, which comes before the socket is closed. The object stays the watch's
  /// own.
  Watched& Add(int socket, Clock::duration limit);
  void Remove(const Watched& watched);
  /// Gives the connection `limit` from now on.
  static void Extend(Watched& watched, Clock::duration limit) { watched.Deadline = Clock::now() + limit; }

 private:
  void CutOverdue();

  std::mutex mutex_;
  std::condition_variable_any stopping_;
  std::list<Watched> connections_;
  std::jthread looker_;
};

}  // namespace orlune
