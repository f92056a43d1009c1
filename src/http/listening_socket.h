#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace orlune {

/// A TCP socket that waits for connections; closed with the object.
class ListeningSocket {
 public:
  /// `address` is numeric, such as "127.0.0.1:8080" or "[::1]:8080"; port 0 takes a free one. Throws
  /// ConfigurationError when it is no such address, std::runtime_error when it cannot be had.
  explicit ListeningSocket(const std::string& address);
  ~ListeningSocket();
  ListeningSocket(ListeningSocket&& other) noexcept
      : address_(std::move(other.address_)), descriptor_(other.Release()) {}
  ListeningSocket& operator=(ListeningSocket&&) = delete;
  ListeningSocket(const ListeningSocket&) = delete;
  ListeningSocket& operator=(const ListeningSocket&) = delete;

  /// The address with the port that was taken.
  const std::string& Address() const { return address_; }
  /// Hands the descriptor over; the caller closes it.
  int Release() { return std::exchange(descriptor_, -1); }

 private:
  std::string address_;
  int descriptor_ = -1;
};

/// Keeps a listening socket from new connections without refusing them: who has begun to connect can finish,
/// the others try again about a second later, and are refused if the socket is closed by then.
void IgnoreNewConnections(int descriptor);
/// Whether somebody has connected to the listening socket and waits to be accepted.
bool HasWaitingConnections(int descriptor);

/// Throws ConfigurationError when `address` is no "ADDRESS:PORT" with a numeric address.
void CheckListenAddress(const std::string& address);

}  // namespace orlune
