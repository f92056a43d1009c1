#pragma once

#include <array>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <list>
#include <memory>
#include <mutex>
#include <string_view>
#include <thread>

#include "http/request_reader.h"

namespace orlune {

class OpenConnections;

/// How long the phases of a connection may take, however busy it is.
struct ConnectionLimits {
  std::chrono::milliseconds Receiving{30'000};  ///< a request, from its beginning to its end
  std::chrono::milliseconds Sending{120'000};   ///< a whole reply, including the time to make it
  std::chrono::milliseconds Idle{15'000};       ///< without a byte in either direction, whole seconds
  std::chrono::milliseconds FirstRequest{500};  ///< at a stop: until a new client's request is received
  std::chrono::milliseconds Stopping{10'000};   ///< at a stop: until all replies are sent
};

/// A client's connection from the moment it is accepted until it is closed. Belongs to `OpenConnections`;
/// used by one thread at a time.
class ClientConnection {
 public:
  ClientConnection(OpenConnections& owner, int socket);

  int Socket() const { return socket_; }

  /// A request with this target arrives.
  RequestReader& StartRequest(std::string_view target, std::size_t maxBody);
  /// The request between `StartRequest` and `EndRequest`.
  RequestReader& Request() { return *request_; }
  /// The request's headers are complete: a stop waits for its reply from now on.
  void HeadersReceived();
  void StartReply();
  /// The request has been answered or given up.
  void EndRequest();
  /// Sends `reply`, a whole HTTP message, and hangs up.
  void Abort(std::string_view reply) const;

 private:
  friend class OpenConnections;
  using Clock = std::chrono::steady_clock;
  /// What a stop has to know of a connection.
  enum class Phase {
    kAccepted,  ///< waits for a thread
    kNew,       ///< has a thread; no request yet
    kReplying,  ///< a request is received from its headers' end on, or answered
    kKept,      ///< between two requests
  };

  OpenConnections& owner_;
  const int socket_;
  std::unique_ptr<RequestReader> request_;
  Phase phase_ = Phase::kAccepted;  // guarded by the owner, as the deadline is
  Clock::time_point deadline_;
};

/// The connections of a host. Its watchdog thread cuts off those past their limits. May be used by several
/// threads at once.
class OpenConnections {
 public:
  explicit OpenConnections(const ConnectionLimits& limits);
  OpenConnections(const OpenConnections&) = delete;
  OpenConnections& operator=(const OpenConnections&) = delete;

  /// An accepted connection that waits for a thread.
  ClientConnection& Accept(int socket);
  /// A thread serves the connection from now on, whether it was accepted here before or is new.
  ClientConnection& Serve(int socket);
  /// Forgets the connection; its socket is closed afterwards.
  void Close(const ClientConnection& connection);

  /// How many requests are being received or answered, from their headers' end on.
  std::size_t RunningRequests() const;
  /// Waits, within the limits, until every client whose connection was accepted has its reply.
  void AwaitReplies();

 private:
  friend class ClientConnection;
  using Clock = ClientConnection::Clock;
  using Phase = ClientConnection::Phase;

  ClientConnection& Add(int socket);
  void Enter(ClientConnection& connection, Phase phase);
  void Extend(ClientConnection& connection, Clock::duration limit);
  std::size_t& CountOf(Phase phase) { return counts_[static_cast<std::size_t>(phase)]; }
  bool AreRepliesPending();
  void CutOffOverdue();

  const ConnectionLimits limits_;
  mutable std::mutex mutex_;
  std::condition_variable phaseChanged_;
  std::condition_variable_any stopping_;
  std::list<ClientConnection> connections_;
  std::array<std::size_t, 4> counts_{};  // by phase
  Clock::time_point newestServedAt_;
  std::jthread watchdog_;
};

}  // namespace orlune
