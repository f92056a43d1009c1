#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include <spdlog/logger.h>

#include "http/address_shares.h"
#include "http/http_message.h"
#include "http/listening_socket.h"
#include "http/open_connections.h"
#include "http/security_headers.h"
#include "http/tls_certificate.h"
#include "http/trusted_proxies.h"

namespace orlune {

/// Limits that the host enforces.
struct HostLimits {
  ShareLimits Connections = {};
  ConnectionLimits Times = {};
  /// Above 32 kB libmicrohttpd maps the memory of a connection, which so goes back to the system at its end.
  std::size_t HeaderBytes = std::size_t{36} << 10U;
  std::size_t BodyBytes = std::size_t{1} << 20U;
  std::size_t WaitingAnswers = 2'000;                  ///< requests that wait for a thread that may wait
  std::chrono::milliseconds WaitingTime{5'000};        ///< after which they are refused
  std::chrono::milliseconds LoginWaitingTime{15'000};  ///< the same for logins, many of which come at once

  /// How many descriptors the connections need.
  std::size_t MostSockets() const;
};

struct HostParts {
  ListeningSocket Socket;
  unsigned Threads;  ///< at least 1
  HostLimits Limits;
  TrustedProxies Proxies;
  spdlog::logger& Log;                                        ///< outlives the host
  std::function<ReplyMessage(const RequestMessage&)> Answer;  ///< may wait
  /// Called first, on the thread that serves the connection among many others: nothing when `Answer` has to
  /// be called, which then runs on another thread. Without it, `Answer` runs on the connection's thread.
  std::function<std::optional<ReplyMessage>(const RequestMessage&)> AnswerAtOnce = nullptr;
  orlune::BodyRulesAt BodyRulesAt = nullptr;  ///< without it, all addresses take the same bodies
  std::function<bool(const RequestMessage&)> IsLogin = nullptr;  ///< has threads of its own for `Answer`
  std::size_t WaitingThreads = 8;  ///< for `Answer`; a quarter of it more for logins
  std::shared_ptr<const TlsCertificate> Certificate = nullptr;  ///< serves HTTPS when there is one
  std::chrono::seconds HstsLifetime{0};  ///< for which browsers remember to use HTTPS only; 0: not told
  std::vector<Header> CommonHeaders = SecurityHeaders();  ///< of every reply
};

/// Serves HTTP or HTTPS on a socket, with several threads. The destructor closes the socket, and before it
/// returns answers every request whose connection had been made by then.
class HttpHost {
 public:
  /// Answers from now on. Throws std::runtime_error.
  explicit HttpHost(HostParts parts);
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
