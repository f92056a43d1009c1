#include "http/hang_ups.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <system_error>

#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace orlune {

HangUps::HangUps() : epoll_(epoll_create1(EPOLL_CLOEXEC)), wake_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  epoll_event woken{EPOLLIN | EPOLLET, {.fd = wake_}};
  if (epoll_ctl(epoll_, EPOLL_CTL_ADD, wake_, &woken) == 0) return;
  const int cause = errno;
  close(wake_);
  close(epoll_);
  throw std::system_error(cause, std::generic_category(), "cannot watch connections");
}

HangUps::~HangUps() {
  close(wake_);
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
    if (events[static_cast<std::size_t>(i)].data.fd != wake_)
      sockets.push_back(events[static_cast<std::size_t>(i)].data.fd);
  }
  return sockets;
}

void HangUps::Wake() const {
  const std::uint64_t one = 1;
  static_cast<void>(write(wake_, &one, sizeof one));
}

}  // namespace orlune
