#include "app/stop_signals.h"

namespace orlune {

StopSignals::StopSignals() {
  sigemptyset(&signals_);
  sigaddset(&signals_, SIGTERM);
  sigaddset(&signals_, SIGINT);
  pthread_sigmask(SIG_BLOCK, &signals_, nullptr);
  std::signal(SIGPIPE, SIG_IGN);  // a closed connection is an error of its write
}

void StopSignals::Wait() const {
  int received = 0;
  sigwait(&signals_, &received);
}

void StopSignals::WaitFor(std::chrono::seconds limit) const {
  const timespec time{limit.count(), 0};
  sigtimedwait(&signals_, nullptr, &time);
}

}  // namespace orlune
