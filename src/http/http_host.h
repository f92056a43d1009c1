#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>

#include "http/http_message.h"
#include "http/listening_socket.h"

namespace orlune {

/// What the host puts up with.
struct HostLimits {
  unsigned Connections = 800;
  unsigned ConnectionsOfOneAddress = 400;  ///< enough for a proxy, which has the only address
  std::chrono::seconds Inactivity{15};
  std::chrono::milliseconds Receiving{30'000};  ///< from a request's beginning to its end
  std::chrono::milliseconds Sending{120'000};   ///< of a whole answer, the time to make it included
  std::chrono::milliseconds Stopping{10'000};   ///< for the requests that run when the host stops
  std::chrono::milliseconds Connecting{50};     ///< for those who are about to connect then
  std::chrono::milliseconds Beginning{500};     ///< for the first request of those who have connected
  std::size_t HeaderBytes = std::size_t{32} << 10U;
  std::size_t BodyBytes = std::size_t{1} << 20U;
};

/// Speaks HTTP on a socket and has every request answered, on several threads at once. Running requests are
/// finished before the destructor returns.
class HttpHost {
 public:
  using Answerer = std::function<ReplyMessage(const RequestMessage&)>;

  /// Answers from now on. `threads` is at least 1. Throws std::runtime_error.
  HttpHost(ListeningSocket socket, unsigned threads, const HostLimits& limits, Answerer answer);
  ~HttpHost();
  HttpHost(const HttpHost&) = delete;
  HttpHost& operator=(const HttpHost&) = delete;

  /// Prepares the stop: each connection ends with its next reply, so that no request is on its way on a kept
  /// one in the end. The stop then takes its time for those who are just connecting.
  void CloseConnectionsAfterReply();

  /// How many requests are being received or answered, from their headers' end on.
  std::size_t RunningRequests() const;

 private:
  class Daemon;
  std::unique_ptr<Daemon> daemon_;
};

}  // namespace orlune
