#pragma once

#include <array>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string_view>
#include <thread>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "http/admission.h"
#include "http/hang_ups.h"
#include "http/request_reader.h"
#include "http/tls_certificate.h"

namespace orlune {

class OpenConnections;

/// How long the phases of a connection may take, however busy it is, and how much its replies.
struct ConnectionLimits {
  std::chrono::milliseconds Headers{
      5'000};  ///< of a request; of the first one from the connection's beginning
  std::chrono::milliseconds Receiving{120'000};  ///< a request from its headers' end on
  std::chrono::milliseconds Sending{600'000};    ///< a whole reply, once it is made
  std::chrono::milliseconds Window{10'000};      ///< in which a body or a reply moves on by `WindowBytes`
  std::uint64_t WindowBytes = 10'000;
  std::chrono::milliseconds Idle{15'000};            ///< without a byte in either direction, whole seconds
  std::chrono::milliseconds FirstRequest{500};       ///< at a stop: until a new client's request is received
  std::chrono::milliseconds Stopping{10'000};        ///< at a stop: until all replies are sent
  std::size_t BodyBytes = std::size_t{64} << 20U;    ///< of memory, for the large bodies of requests
  std::size_t ReplyBytes = std::size_t{256} << 20U;  ///< of memory, for the replies that are being sent
};

/// A client's connection from the moment it is accepted until it is closed. Belongs to `OpenConnections`;
/// used by one thread at a time.
class ClientConnection {
 public:
  ClientConnection(OpenConnections& owner, int socket, std::size_t thread, AdmissionTicket ticket);

  int Socket() const { return socket_; }
  /// Which of the host's threads serves it.
  std::size_t Thread() const { return thread_; }
  const AdmissionTicket& Ticket() const { return ticket_; }
  /// Keeps what its TLS session needs until its end.
  void Use(TlsCertificate::Credentials credentials) { credentials_ = std::move(credentials); }

  /// A request with this target arrives.
  RequestReader& StartRequest(std::string_view target, std::size_t maxForm, const BodyRulesAt& rulesAt);
  /// The request between `StartRequest` and `EndRequest`.
  RequestReader& Request() { return *request_; }
  /// The request's headers are complete: a stop waits for its reply from now on.
  void HeadersReceived();
  /// The request takes a place until its end.
  void Hold(AddressShares::Place place);
  /// The request is complete, and its reply is being made.
  void RequestReceived();
  /// The reply is made on another thread, which ends with `GiveReply`; meanwhile the connection's thread
  /// serves others.
  void WaitForReply();
  void GiveReply(ReplyMessage reply) { reply_ = std::move(reply); }
  /// The reply that was given, once.
  std::optional<ReplyMessage> TakeReply() { return std::exchange(reply_, std::nullopt); }
  /// `bytes` of the request's body are kept. False when there is no room for them beside other bodies; then
  /// they must be discarded. Small ones always have room.
  bool HoldBody(std::size_t bytes);
  /// A reply of `bytes` of memory is there. False when there is no room for it beside those that are being
  /// sent; then the slowest are cut off, and there is soon. Small ones always have room.
  bool HoldReply(std::size_t bytes);
  /// The reply is sent from now on.
  void StartReply();
  /// The request has been answered or given up.
  void EndRequest();
  /// Sends `reply`, a whole HTTP message, and hangs up.
  void Abort(std::string_view reply) const;

 private:
  friend class OpenConnections;
  using Clock = std::chrono::steady_clock;

  const std::optional<IpAddress>& Visitor() const;
  bool IsBeingAnswered() const { return phase_ == Phase::kAnswering || phase_ == Phase::kWaiting; }

  enum class Phase {
    kAccepted,   ///< waits for a thread
    kNew,        ///< has a thread; no request yet
    kReceiving,  ///< a request's headers have been received, its body has not
    kAnswering,  ///< a reply is being made
    kWaiting,    ///< the same, on another thread
    kSending,    ///< a reply is being sent
    kKept,       ///< between two requests
  };
  /// The time in which the connection has to move on, and how far it had come at its beginning.
  struct Window {
    Clock::time_point End;
    std::uint64_t BytesBefore;
  };

  OpenConnections& owner_;
  const int socket_;
  const std::size_t thread_;
  const AdmissionTicket ticket_;
  std::unique_ptr<RequestReader> request_;
  std::optional<ReplyMessage> reply_;
  TlsCertificate::Credentials credentials_;
  std::optional<AddressShares::Place> requestPlace_;
  Phase phase_ = Phase::kAccepted;  // guarded by the owner, as all below
  Clock::time_point deadline_;
  std::optional<Window> window_;
  std::size_t bodyBytes_ = 0;
  std::size_t replyBytes_ = 0;
  bool isCutOff_ = false;
  bool wasHungUp_ = false;  // when the watchdog last looked, in this phase
};

/// The connections of a host, spread over its threads. Its watchdog thread cuts off those past their limits,
/// and those whose client has hung up without leaving a whole request. May be used by several threads at
/// once.
class OpenConnections {
 public:
  OpenConnections(const ConnectionLimits& limits, std::size_t threads);
  OpenConnections(const OpenConnections&) = delete;
  OpenConnections& operator=(const OpenConnections&) = delete;

  /// An accepted connection waits for the thread that has least to do.
  ClientConnection& Accept(int socket, AdmissionTicket ticket);
  /// The thread of an accepted connection serves it from now on.
  ClientConnection& Serve(int socket);
  /// Forgets the connection; its socket is closed afterwards.
  void Close(int socket);

  /// How many requests are being received or answered, from their headers' end on.
  std::size_t RunningRequests() const;
  /// Waits, within the limits, until every client whose connection was accepted has its reply.
  void AwaitReplies();

 private:
  friend class ClientConnection;
  using Clock = ClientConnection::Clock;
  using Phase = ClientConnection::Phase;

  void Forget(int socket);
  void MakeRoomFor(std::size_t bytes);
  ClientConnection* SlowestOfLargestHolder();
  void CutOff(ClientConnection& connection) const;
  void Enter(ClientConnection& connection, Phase phase, Clock::duration limit);
  std::size_t& CountAt(std::size_t thread, Phase phase);
  std::size_t CountOf(Phase phase) const;
  std::size_t CountRunning() const;
  std::size_t LeastBusyThread() const;
  void Watch(const std::stop_token& stop);
  void CutOffWhoHungUp();
  bool IsGivenUp(ClientConnection& connection) const;
  void CutOffOverdue();
  bool IsOverdue(const ClientConnection& connection, Clock::time_point now) const;
  bool IsStalled(ClientConnection& connection, Clock::time_point now) const;

  const ConnectionLimits limits_;
  mutable std::mutex mutex_;
  std::condition_variable phaseChanged_;
  std::unordered_map<int, ClientConnection> connections_;  // by socket
  std::vector<std::array<std::size_t, 7>> counts_;         // by thread and phase
  std::size_t bodyBytes_ = 0;                              // in all connections, as those of replies
  std::size_t replyBytes_ = 0;
  Clock::time_point newestServedAt_;
  HangUps hangUps_;
  std::unordered_set<int> hungUp_;  // sockets of clients that may wait for a reply only
  std::jthread watchdog_;
};

}  // namespace orlune
