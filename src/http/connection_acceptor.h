#pragma once

#include <functional>
#include <optional>
#include <stop_token>
#include <thread>

#include <spdlog/logger.h>
#include <sys/socket.h>

#include "http/listening_socket.h"
#include "http/occasional_warning.h"
#include "http/wake_up.h"

namespace orlune {

/// A connection as it is accepted; whoever receives it closes the socket, which does not block.
struct AcceptedConnection {
  int Socket;
  sockaddr_storage Peer;
  socklen_t PeerSize;

  const sockaddr& PeerAddress() const { return reinterpret_cast<const sockaddr&>(Peer); }
};

/// Accepts the connections of a listening socket, in a thread of its own. Without file descriptors it pauses.
class ConnectionAcceptor {
 public:
  using Receiver = std::function<void(const AcceptedConnection&)>;
  /// Accepts one connection of a listening socket; -1 and `errno` like accept(2).
  using AcceptCall = std::function<int(int listening, sockaddr* peer, socklen_t* peerSize)>;

  /// `receive` is called by the acceptor's thread; it does not throw. The log outlives the acceptor.
  ConnectionAcceptor(ListeningSocket socket, spdlog::logger& log, Receiver receive,
                     AcceptCall accept = Accept);
  ~ConnectionAcceptor() { Stop(); }
  ConnectionAcceptor(const ConnectionAcceptor&) = delete;
  ConnectionAcceptor& operator=(const ConnectionAcceptor&) = delete;

  /// Accepts whoever waits, and closes the socket.
  void Stop();

 private:
  static int Accept(int listening, sockaddr* peer, socklen_t* peerSize);
  void Work(const std::stop_token& stop);
  /// Whether there were resources for all who waited.
  bool AcceptWaiting();

  std::optional<ListeningSocket> socket_;
  OccasionalWarning paused_;
  const Receiver receive_;
  const AcceptCall accept_;
  WakeUp stopping_;
  std::jthread thread_;
};

}  // namespace orlune
