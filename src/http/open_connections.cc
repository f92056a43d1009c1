#include "http/open_connections.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <utility>

#include <sys/socket.h>

#include "http/socket_state.h"

namespace orlune {
namespace {

using std::chrono::milliseconds;

// A thread that has read a request to its end may be about to say so.
constexpr milliseconds kBetweenLooks(50);
constexpr std::size_t kSmallBody = std::size_t{256} << 10U;
constexpr std::size_t kSmallReply = std::size_t{64} << 10U;

}  // namespace

ClientConnection::ClientConnection(OpenConnections& owner, int socket, std::size_t thread,
                                   AdmissionTicket ticket)
    : owner_(owner), socket_(socket), thread_(thread), ticket_(std::move(ticket)) {}

RequestReader& ClientConnection::StartRequest(std::string_view target, std::size_t maxForm,
                                              const BodyRulesAt& rulesAt) {
  request_ = std::make_unique<RequestReader>(target, maxForm, rulesAt);
  const std::lock_guard lock(owner_.mutex_);
  if (phase_ == Phase::kKept) deadline_ = Clock::now() + owner_.limits_.Headers;
  return *request_;
}

void ClientConnection::HeadersReceived() {
  const std::lock_guard lock(owner_.mutex_);
  owner_.Enter(*this, Phase::kReceiving, owner_.limits_.Receiving);
}

void ClientConnection::Hold(AddressShares::Place place) {
  const std::lock_guard lock(owner_.mutex_);
  requestPlace_ = std::move(place);
}

void ClientConnection::RequestReceived() {
  const std::lock_guard lock(owner_.mutex_);
  owner_.Enter(*this, Phase::kAnswering, Clock::duration::zero());
}

void ClientConnection::WaitForReply() {
  const std::lock_guard lock(owner_.mutex_);
  owner_.Enter(*this, Phase::kWaiting, Clock::duration::zero());
}

bool ClientConnection::HoldBody(std::size_t bytes) {
  const std::size_t counted = bytes <= kSmallBody ? 0 : bytes;
  const std::lock_guard lock(owner_.mutex_);
  const std::size_t others = owner_.bodyBytes_ - bodyBytes_;
  const bool hasRoom = counted == 0 || others + counted <= owner_.limits_.BodyBytes;
  bodyBytes_ = hasRoom ? counted : 0;
  owner_.bodyBytes_ = others + bodyBytes_;
  return hasRoom;
}

bool ClientConnection::HoldReply(std::size_t bytes) {
  const std::lock_guard lock(owner_.mutex_);
  const bool hasRoom = bytes <= kSmallReply || owner_.replyBytes_ + bytes <= owner_.limits_.ReplyBytes;
  if (!hasRoom) {
    owner_.MakeRoomFor(bytes);
    return false;
  }
  replyBytes_ = bytes;
  owner_.replyBytes_ += bytes;
  return true;
}

void ClientConnection::StartReply() {
  const std::lock_guard lock(owner_.mutex_);
  owner_.Enter(*this, Phase::kSending, owner_.limits_.Sending);
}

void ClientConnection::EndRequest() {
  request_ = nullptr;
  const std::lock_guard lock(owner_.mutex_);
  requestPlace_ = std::nullopt;
  owner_.bodyBytes_ -= std::exchange(bodyBytes_, 0);
  owner_.replyBytes_ -= std::exchange(replyBytes_, 0);
  if (phase_ != Phase::kNew) owner_.Enter(*this, Phase::kKept, owner_.limits_.Idle);
}

void ClientConnection::Abort(std::string_view reply) const {
  static_cast<void>(send(socket_, reply.data(), reply.size(), MSG_NOSIGNAL | MSG_DONTWAIT));
  shutdown(socket_, SHUT_RDWR);
}

const std::optional<IpAddress>& ClientConnection::Visitor() const {
  return requestPlace_ ? requestPlace_->Network() : ticket_.Place.Network();
}

OpenConnections::OpenConnections(const ConnectionLimits& limits, std::size_t threads)
    : limits_(limits), counts_(threads), watchdog_([this](const std::stop_token& stop) { Watch(stop); }) {}

ClientConnection& OpenConnections::Accept(int socket, AdmissionTicket ticket) {
  const std::lock_guard lock(mutex_);
  Forget(socket);  // libmicrohttpd tells nothing of connections that it has no memory for
  const std::size_t thread = LeastBusyThread();
  ++CountAt(thread, Phase::kAccepted);
  return connections_.try_emplace(socket, *this, socket, thread, std::move(ticket)).first->second;
}

ClientConnection& OpenConnections::Serve(int socket) {
  const std::lock_guard lock(mutex_);
  newestServedAt_ = Clock::now();
  ClientConnection& connection = connections_.at(socket);
  Enter(connection, Phase::kNew, limits_.Headers);
  hangUps_.Watch(socket);
  return connection;
}

void OpenConnections::Close(int socket) {
  const std::lock_guard lock(mutex_);
  Forget(socket);
  phaseChanged_.notify_all();
}

std::size_t OpenConnections::RunningRequests() const {
  const std::lock_guard lock(mutex_);
  return CountRunning();
}

void OpenConnections::AwaitReplies() {
  const auto deadline = Clock::now() + limits_.Stopping;
  std::unique_lock lock(mutex_);
  newestServedAt_ = Clock::now();
  while (Clock::now() < deadline) {
    if (CountOf(Phase::kAccepted) > 0 || CountRunning() > 0) {
      phaseChanged_.wait_until(lock, deadline);
    } else if (CountOf(Phase::kNew) > 0 && Clock::now() < newestServedAt_ + limits_.FirstRequest) {
      phaseChanged_.wait_until(lock, std::min(deadline, newestServedAt_ + limits_.FirstRequest));
    } else {
      return;
    }
  }
}

void OpenConnections::Forget(int socket) {
  const auto known = connections_.find(socket);
  if (known == connections_.end()) return;
  --CountAt(known->second.thread_, known->second.phase_);
  bodyBytes_ -= known->second.bodyBytes_;
  replyBytes_ -= known->second.replyBytes_;
  connections_.erase(known);
}

void OpenConnections::MakeRoomFor(std::size_t bytes) {
  std::size_t staying = 0;
  for (const auto& [socket, connection] : connections_)
    staying += connection.isCutOff_ ? 0 : connection.replyBytes_;
  while (staying + bytes > limits_.ReplyBytes) {
    ClientConnection* slowest = SlowestOfLargestHolder();
    if (slowest == nullptr) return;
    CutOff(*slowest);
    staying -= slowest->replyBytes_;
  }
}

// The visitor whose replies take most loses the one that has been read for longest.
ClientConnection* OpenConnections::SlowestOfLargestHolder() {
  struct Holder {
    std::size_t Bytes = 0;
    ClientConnection* Slowest = nullptr;
  };
  std::map<std::optional<IpAddress>, Holder> holders;
  for (auto& [socket, connection] : connections_) {
    if (connection.replyBytes_ <= kSmallReply || connection.isCutOff_) continue;
    Holder& holder = holders[connection.Visitor()];
    holder.Bytes += connection.replyBytes_;
    if (holder.Slowest == nullptr || connection.deadline_ < holder.Slowest->deadline_)
      holder.Slowest = &connection;
  }
  const auto largest =
      std::ranges::max_element(holders, {}, [](const auto& holder) { return holder.second.Bytes; });
  return largest == holders.end() ? nullptr : largest->second.Slowest;
}

// The connection's thread notices, and closes it.
void OpenConnections::CutOff(ClientConnection& connection) const {
  shutdown(connection.socket_, SHUT_RDWR);
  connection.isCutOff_ = true;
}

void OpenConnections::Enter(ClientConnection& connection, Phase phase, Clock::duration limit) {
  --CountAt(connection.thread_, connection.phase_);
  ++CountAt(connection.thread_, phase);
  connection.phase_ = phase;
  connection.deadline_ = Clock::now() + limit;
  connection.window_ = std::nullopt;
  connection.wasHungUp_ = false;
  phaseChanged_.notify_all();
}

std::size_t& OpenConnections::CountAt(std::size_t thread, Phase phase) {
  return counts_[thread][static_cast<std::size_t>(phase)];
}

std::size_t OpenConnections::CountOf(Phase phase) const {
  std::size_t count = 0;
  for (const auto& counts : counts_) count += counts[static_cast<std::size_t>(phase)];
  return count;
}

std::size_t OpenConnections::CountRunning() const {
  return CountOf(Phase::kReceiving) + CountOf(Phase::kAnswering) + CountOf(Phase::kWaiting) +
         CountOf(Phase::kSending);
}

// A thread that makes a page serves nobody else meanwhile.
std::size_t OpenConnections::LeastBusyThread() const {
  const auto load = [](const auto& counts) {
    return std::pair(counts[static_cast<std::size_t>(Phase::kAnswering)],
                     std::accumulate(counts.begin(), counts.end(), std::size_t{0}));
  };
  const auto least = std::ranges::min_element(counts_, {}, load);
  return static_cast<std::size_t>(least - counts_.begin());
}

void OpenConnections::Watch(const std::stop_token& stop) {
  const std::stop_callback wake(stop, [this] { hangUps_.Wake(); });
  const auto period =
      std::min<milliseconds>(std::min({limits_.Headers, limits_.Window, limits_.Idle}) / 4 + milliseconds(1),
                             std::chrono::seconds(1));
  auto nextRound = Clock::now() + period;
  while (!stop.stop_requested()) {
    const std::vector<int> noticed =
        hangUps_.Await(hungUp_.empty() ? period : std::min(period, kBetweenLooks));
    const std::lock_guard lock(mutex_);
    CutOffWhoHungUp();
    hungUp_.insert(noticed.begin(), noticed.end());
    if (Clock::now() < nextRound) continue;
    CutOffOverdue();
    nextRound = Clock::now() + period;
  }
}

void OpenConnections::CutOffWhoHungUp() {
  std::erase_if(hungUp_, [this](int socket) {
    const auto connection = connections_.find(socket);
    if (connection == connections_.end() || !HasHungUp(socket)) return true;
    if (!IsGivenUp(connection->second)) return false;
    CutOff(connection->second);
    return true;
  });
}

// Whoever has closed one direction only may wait for the reply to a whole request.
bool OpenConnections::IsGivenUp(ClientConnection& connection) const {
  if (connection.IsBeingAnswered() || connection.phase_ == Phase::kSending) return false;
  if (HasUnreadBytes(connection.socket_)) return false;
  return std::exchange(connection.wasHungUp_, true);
}

void OpenConnections::CutOffOverdue() {
  const auto now = Clock::now();
  for (auto& [socket, connection] : connections_) {
    if (IsOverdue(connection, now) || IsStalled(connection, now)) CutOff(connection);
  }
}

bool OpenConnections::IsOverdue(const ClientConnection& connection, Clock::time_point now) const {
  if (connection.phase_ == Phase::kAccepted || connection.IsBeingAnswered()) return false;
  if (now < connection.deadline_) return false;
  const bool waitsForThread = HasUnreadBytes(connection.socket_);
  return !waitsForThread || connection.deadline_ + limits_.Receiving < now;
}

bool OpenConnections::IsStalled(ClientConnection& connection, Clock::time_point now) const {
  const bool isSending = connection.phase_ == Phase::kSending;
  if (!isSending && connection.phase_ != Phase::kReceiving) return false;
  if (connection.window_ && now < connection.window_->End) return false;
  const MovedBytes moved = BytesMoved(connection.socket_);
  const std::uint64_t bytes = isSending ? moved.ToPeer : moved.FromPeer;
  const bool waitsForThread =
      isSending ? !HasUnacknowledgedBytes(connection.socket_) : HasUnreadBytes(connection.socket_);
  const bool isStalled =
      connection.window_ && !waitsForThread && bytes < connection.window_->BytesBefore + limits_.WindowBytes;
  connection.window_ = {now + limits_.Window, bytes};
  return isStalled;
}

}  // namespace orlune
