#include "http/socket_state.h"

#include <linux/sockios.h>
#include <linux/tcp.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

namespace orlune {
namespace {

bool HasQueued(int socket, unsigned long queue) {
  int bytes = 0;
  return ioctl(socket, queue, &bytes) == 0 && bytes > 0;
}

}  // namespace

bool HasHungUp(int socket) {
  pollfd state{socket, POLLRDHUP, 0};
  return poll(&state, 1, 0) > 0;
}

bool HasUnreadBytes(int socket) {
  return HasQueued(socket, SIOCINQ);
}

bool HasUnacknowledgedBytes(int socket) {
  return HasQueued(socket, SIOCOUTQ);
}

MovedBytes BytesMoved(int socket) {
  tcp_info state{};
  socklen_t size = sizeof state;
  if (getsockopt(socket, IPPROTO_TCP, TCP_INFO, &state, &size) != 0) return {};
  return {state.tcpi_bytes_received, state.tcpi_bytes_acked};
}

}  // namespace orlune
