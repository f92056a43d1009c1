#include "http/connection_acceptor.h"

#include <cerrno>
#include <chrono>
#include <utility>

#include <poll.h>

namespace orlune {
namespace {

constexpr std::chrono::milliseconds kPause(250);
// At a stop, so that clients who keep coming do not prevent it.
constexpr int kMostAtOnce = 20'000;

bool IsOutOfResources(int error) {
  return error == EMFILE || error == ENFILE || error == ENOBUFS || error == ENOMEM;
}

}  // namespace

ConnectionAcceptor::ConnectionAcceptor(ListeningSocket socket, spdlog::logger& log, Receiver receive,
                                       AcceptCall accept)
    : socket_(std::move(socket)),
      paused_(log, "no file descriptors or memory left for new connections"),
      receive_(std::move(receive)),
      accept_(std::move(accept)),
      thread_([this](const std::stop_token& stop) { Work(stop); }) {}

void ConnectionAcceptor::Stop() {
  if (!thread_.joinable()) return;
  thread_.request_stop();
  stopping_.Signal();
  thread_.join();
  // Closing a listening socket resets the connections that wait in its queue, and a proxy does not send a
  // form twice. So those are accepted first.
  AcceptWaiting();
  socket_ = std::nullopt;
}

int ConnectionAcceptor::Accept(int listening, sockaddr* peer, socklen_t* peerSize) {
  return accept4(listening, peer, peerSize, SOCK_NONBLOCK | SOCK_CLOEXEC);
}

void ConnectionAcceptor::Work(const std::stop_token& stop) {
  pollfd awaited[] = {{stopping_.Descriptor(), POLLIN, 0}, {socket_->Descriptor(), POLLIN, 0}};
  while (!stop.stop_requested()) {
    poll(awaited, 2, -1);
    if (stop.stop_requested() || AcceptWaiting()) continue;
    paused_.Report();
    // Whoever cannot be accepted leaves the socket readable.
    poll(awaited, 1, static_cast<int>(kPause.count()));
  }
}

bool ConnectionAcceptor::AcceptWaiting() {
  for (int accepted = 0; accepted < kMostAtOnce; ++accepted) {
    AcceptedConnection connection{-1, {}, sizeof(sockaddr_storage)};
    connection.Socket =
        accept_(socket_->Descriptor(), reinterpret_cast<sockaddr*>(&connection.Peer), &connection.PeerSize);
    if (connection.Socket >= 0) {
      receive_(connection);
    } else if (errno != EINTR && errno != ECONNABORTED) {
      return !IsOutOfResources(errno);
    }
  }
  return true;
}

}  // namespace orlune
