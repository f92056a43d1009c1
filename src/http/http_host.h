#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

#include "http/http_message.h"
#include "http/listening_socket.h"
#include "http/open_connections.h"
#include "http/security_headers.h"

namespace orlune {

/// Limits that the host enforces.
struct HostLimits {
  unsigned Connections = 800;
  unsigned ConnectionsPerAddress = 400;  ///< enough for a proxy, whose clients all share its address
  ConnectionLimits Times = {};
  std::size_t HeaderBytes = std::size_t{32} << 10U;
  std::size_t BodyBytes = std::size_t{1} << 20U;
};

/// Serves HTTP on a socket, with several threads. The destructor closes the socket, and before it returns
/// answers every request whose connection had been made by then.
class HttpHost {
 public:
  using Answerer = std::function<ReplyMessage(const RequestMessage&)>;

  /// Answers from now on, every reply with `commonHeaders`. `threads` is at least 1. Throws
  /// std::runtime_error.
  HttpHost(ListeningSocket socket, unsigned threads, const HostLimits& limits, Answerer answer,
           std::vector<Header> commonHeaders = SecurityHeaders());
  ~HttpHost();
  HttpHost(const HttpHost&) = delete;
  HttpHost& operator=(const HttpHost&) = delete;

  /// Closes each connection after its next reply, so that at the stop no request is on its way on one that
  /// was kept open. New connections are still accepted.
  void CloseConnectionsAfterReply();

  /// How many requests are being received or answered, from their headers' end on.
  std::size_t RunningRequests() const;

 private:
  class Daemon;
  std::unique_ptr<Daemon> daemon_;
};

}  // namespace orlune
