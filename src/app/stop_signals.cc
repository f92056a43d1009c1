#include "app/stop_signals.h"

namespace orlune {

StopSignals::StopSignals() {
  sigemptyset(&stopping_);
  sigaddset(&stopping_, SIGTERM);
  sigaddset(&stopping_, SIGINT);
  all_ = stopping_;
  sigaddset(&all_, SIGHUP);
  pthread_sigmask(SIG_BLOCK, &all_, nullptr);
  std::signal(SIGPIPE, SIG_IGN);  // a closed connection is an error of its write
  std::signal(SIGXFSZ, SIG_IGN);  // and so is a file that must not grow
}

void StopSignals::Wait(const std::function<void()>& reload) const {
  for (int received = 0; sigwait(&all_, &received) == 0 && received == SIGHUP;) reload();
}

void StopSignals::WaitFor(std::chrono::seconds limit) const {
  const timespec time{limit.count(), 0};
  sigtimedwait(&stopping_, nullptr, &time);
}

}  // namespace orlune
