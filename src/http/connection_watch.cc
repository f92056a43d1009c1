#include "http/connection_watch.h"

#include <sys/socket.h>

namespace orlune {

ConnectionWatch::ConnectionWatch(std::chrono::milliseconds period)
    : looker_([this, period](const std::stop_token& stop) {
        std::unique_lock lock(mutex_);
        while (!stopping_.wait_for(lock, stop, period, [&stop] { return stop.stop_requested(); }))
          CutOverdue();
      }) {}

ConnectionWatch::Watched& ConnectionWatch::Add(int socket, Clock::duration limit) {
  const std::lock_guard lock(mutex_);
  return connections_.emplace_back(socket, Clock::now() + limit);
}

void ConnectionWatch::Remove(const Watched& watched) {
  const std::lock_guard lock(mutex_);
  connections_.remove_if([&watched](const Watched& known) { return &known == &watched; });
}

void ConnectionWatch::CutOverdue() {
  const Clock::time_point now = Clock::now();
  for (const Watched& watched : connections_) {
    if (watched.Deadline.load() < now) shutdown(watched.Socket, SHUT_RDWR);
  }
}

}  // namespace orlune
