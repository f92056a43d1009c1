#include "http/open_connections.h"

#include <algorithm>

#include <sys/socket.h>

namespace orlune {

ClientConnection::ClientConnection(OpenConnections& owner, int socket)
    : owner_(owner), socket_(socket), deadline_(Clock::now() + owner.limits_.Receiving) {}

RequestReader& ClientConnection::StartRequest(std::string_view target, std::size_t maxBody) {
  request_ = std::make_unique<RequestReader>(target, maxBody);
  return *request_;
}

void ClientConnection::HeadersReceived() {
  const std::lock_guard lock(owner_.mutex_);
  owner_.Enter(*this, Phase::kReplying);
}

void ClientConnection::StartReply() {
  const std::lock_guard lock(owner_.mutex_);
  deadline_ = Clock::now() + owner_.limits_.Sending;
}

void ClientConnection::EndRequest() {
  request_ = nullptr;
  const std::lock_guard lock(owner_.mutex_);
  deadline_ = Clock::now() + owner_.limits_.Idle + owner_.limits_.Receiving;
  if (phase_ == Phase::kReplying) owner_.Enter(*this, Phase::kKept);
}

void ClientConnection::Abort(std::string_view reply) const {
  static_cast<void>(send(socket_, reply.data(), reply.size(), MSG_NOSIGNAL | MSG_DONTWAIT));
  shutdown(socket_, SHUT_RDWR);
}

OpenConnections::OpenConnections(const ConnectionLimits& limits)
    : limits_(limits), watchdog_([this](const std::stop_token& stop) {
        const auto period =
            std::min<std::chrono::milliseconds>(limits_.Receiving / 4, std::chrono::seconds(1));
        std::unique_lock lock(mutex_);
        while (!stopping_.wait_for(lock, stop, period, [&stop] { return stop.stop_requested(); }))
          CutOffOverdue();
      }) {}

ClientConnection& OpenConnections::Accept(int socket) {
  const std::lock_guard lock(mutex_);
  return Add(socket);
}

ClientConnection& OpenConnections::Serve(int socket) {
  const std::lock_guard lock(mutex_);
  newestServedAt_ = Clock::now();
  ClientConnection* connection = nullptr;
  if (CountOf(Phase::kAccepted) > 0) {
    const auto accepted = std::ranges::find(connections_, socket, &ClientConnection::Socket);
    if (accepted != connections_.end()) connection = &*accepted;
  }
  if (connection == nullptr) connection = &Add(socket);
  Enter(*connection, Phase::kNew);
  return *connection;
}

void OpenConnections::Close(const ClientConnection& connection) {
  const std::lock_guard lock(mutex_);
  --CountOf(connection.phase_);
  connections_.remove_if([&connection](const ClientConnection& known) { return &known == &connection; });
  phaseChanged_.notify_all();
}

std::size_t OpenConnections::RunningRequests() const {
  const std::lock_guard lock(mutex_);
  return counts_[static_cast<std::size_t>(Phase::kReplying)];
}

void OpenConnections::AwaitReplies() {
  const auto deadline = Clock::now() + limits_.Stopping;
  std::unique_lock lock(mutex_);
  newestServedAt_ = Clock::now();
  while (Clock::now() < deadline) {
    if (AreRepliesPending()) {
      phaseChanged_.wait_until(lock, deadline);
    } else if (CountOf(Phase::kNew) > 0 && Clock::now() < newestServedAt_ + limits_.FirstRequest) {
      phaseChanged_.wait_until(lock, std::min(deadline, newestServedAt_ + limits_.FirstRequest));
    } else {
      return;
    }
  }
}

bool OpenConnections::AreRepliesPending() {
  return CountOf(Phase::kAccepted) > 0 || CountOf(Phase::kReplying) > 0;
}

ClientConnection& OpenConnections::Add(int socket) {
  ++CountOf(Phase::kAccepted);
  return connections_.emplace_back(*this, socket);
}

void OpenConnections::Enter(ClientConnection& connection, Phase phase) {
  --CountOf(connection.phase_);
  ++CountOf(phase);
  connection.phase_ = phase;
  phaseChanged_.notify_all();
}

void OpenConnections::CutOffOverdue() {
  const auto now = Clock::now();
  for (const ClientConnection& connection : connections_) {
    if (connection.deadline_ < now) shutdown(connection.socket_, SHUT_RDWR);
  }
}

}  // namespace orlune
