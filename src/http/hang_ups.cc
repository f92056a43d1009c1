#include "http/hang_ups.h"

#include <array>
#include <cerrno>
#include <system_error>

#include <sys/epoll.h>
#include <unistd.h>

namespace orlune {

HangUps::HangUps() : epoll_(epoll_create1(EPOLL_CLOEXEC)) {
  epoll_event woken{EPOLLIN | EPOLLET, {.fd = wakeUp_.Descriptor()}};
  if (epoll_ctl(epoll_, EPOLL_CTL_ADD, wakeUp_.Descriptor(), &woken) == 0) return;
  const int cause = errno;
  close(epoll_);
  throw std::system_error(cause, std::generic_category(), "cannot watch connections");
}

HangUps::~HangUps() {
  close(epoll_);
}

void HangUps::Watch(int socket) const {
  epoll_event closed{EPOLLRDHUP | EPOLLET, {.fd = socket}};
  epoll_ctl(epoll_, EPOLL_CTL_ADD, socket, &closed);
}

std::vector<int> HangUps::Await(std::chrono::milliseconds limit) const {
  std::array<epoll_event, 256> events;
  const int count =
      epoll_wait(epoll_, events.data(), static_cast<int>(events.size()), static_cast<int>(limit.count()));
  std::vector<int> sockets;
  for (int i = 0; i < count; ++i) {
    if (events[static_cast<std::size_t>(i)].data.fd != wakeUp_.Descriptor())
      sockets.push_back(events[static_cast<std::size_t>(i)].data.fd);
  }
  return sockets;
}

}  // namespace orlune
