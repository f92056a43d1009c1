#include "delaying_proxy.h"

#include <algorithm>
#include <array>
#include <deque>
#include <list>
#include <system_error>
#include <vector>

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/prctl.h>
#include <sys/socket.h>

namespace orlune::bench {
namespace {

using Clock = std::chrono::steady_clock;

int Checked(int result) {
  if (result < 0) throw std::system_error(errno, std::generic_category());
  return result;
}

sockaddr_in Loopback(std::uint16_t port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(port);
  return address;
}

const sockaddr* Generic(const sockaddr_in& address) {
  return reinterpret_cast<const sockaddr*>(&address);
}

void SendAtOnce(int socket) {
  const int on = 1;
  Checked(setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on));
}

FileDescriptor Listen() {
  FileDescriptor listener(Checked(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)));
  const sockaddr_in anyPort = Loopback(0);
  Checked(bind(listener.Number(), Generic(anyPort), sizeof anyPort));
  Checked(listen(listener.Number(), SOMAXCONN));
  return listener;
}

std::uint16_t PortOf(const FileDescriptor& listener) {
  sockaddr_in address{};
  socklen_t length = sizeof address;
  Checked(getsockname(listener.Number(), reinterpret_cast<sockaddr*>(&address), &length));
  return ntohs(address.sin_port);
}

FileDescriptor Connect(std::uint16_t port) {
  FileDescriptor connection(Checked(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)));
  const sockaddr_in server = Loopback(port);
  Checked(connect(connection.Number(), Generic(server), sizeof server));
  return connection;
}

/// The bytes in flight in one direction.
class DelayedStream {
 public:
  DelayedStream(int from, int to) : from_(from), to_(to) {}

  /// Reads what has arrived; false when the sender has closed the connection.
  bool Receive(Clock::duration delay) {
    std::array<char, 65536> buffer{};
    const ssize_t length = recv(from_, buffer.data(), buffer.size(), 0);
    if (length <= 0) return false;
    chunks_.push_back({Clock::now() + delay, {buffer.begin(), buffer.begin() + length}});
    return true;
  }

  /// Sends what is due by now; false when the receiver has closed the connection.
  bool Deliver() {
    while (!chunks_.empty() && chunks_.front().Arrival <= Clock::now()) {
      std::vector<char>& bytes = chunks_.front().Bytes;
      const ssize_t length = send(to_, bytes.data(), bytes.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
      if (length < 0 && errno != EAGAIN) return false;
      bytes.erase(bytes.begin(), bytes.begin() + std::max<ssize_t>(length, 0));
      if (bytes.empty()) {
        chunks_.pop_front();
      } else {
        chunks_.front().Arrival = Clock::now() + kRetry;
      }
    }
    return true;
  }

  Clock::time_point NextArrival() const {
    return chunks_.empty() ? Clock::time_point::max() : chunks_.front().Arrival;
  }

 private:
  static constexpr std::chrono::microseconds kRetry{50};

  struct Chunk {
    Clock::time_point Arrival;
    std::vector<char> Bytes;
  };

  int from_;
  int to_;
  std::deque<Chunk> chunks_;
};

class Tunnel {
 public:
  Tunnel(FileDescriptor client, FileDescriptor server)
      : client_(std::move(client)),
        server_(std::move(server)),
        up_(client_.Number(), server_.Number()),
        down_(server_.Number(), client_.Number()) {
    SendAtOnce(client_.Number());
    SendAtOnce(server_.Number());
  }

  void AddTo(std::vector<pollfd>& polled) const {
    polled.push_back({client_.Number(), POLLIN, 0});
    polled.push_back({server_.Number(), POLLIN, 0});
  }

  /// Reads from those of the two sockets of `polled` that are ready; false when one was closed.
  bool Receive(const pollfd* polled, Clock::duration delay, std::atomic<std::uint64_t>& roundTrips) {
    if (polled[0].revents != 0) {
      if (!up_.Receive(delay)) return false;
      roundTrips += std::exchange(isAnswered_, false) ? 1 : 0;
    }
    if (polled[1].revents != 0) {
      if (!down_.Receive(delay)) return false;
      isAnswered_ = true;
    }
    return true;
  }
  bool Deliver() { return up_.Deliver() && down_.Deliver(); }
  Clock::time_point NextArrival() const { return std::min(up_.NextArrival(), down_.NextArrival()); }

 private:
  FileDescriptor client_;
  FileDescriptor server_;
  DelayedStream up_;
  DelayedStream down_;
  bool isAnswered_ = true;
};

void WaitUntil(Clock::time_point time, std::vector<pollfd>& polled) {
  if (time == Clock::time_point::max()) {
    ppoll(polled.data(), polled.size(), nullptr, nullptr);
    return;
  }
  const auto rest = std::max(Clock::duration(0), time - Clock::now());
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(rest);
  const timespec timeout{seconds.count(), (rest - seconds).count()};
  ppoll(polled.data(), polled.size(), &timeout, nullptr);
}

}  // namespace

DelayingProxy::DelayingProxy(std::uint16_t serverPort, std::chrono::nanoseconds roundTrip)
    : serverPort_(serverPort),
      delay_(roundTrip / 2),
      listener_(Listen()),
      end_(Checked(eventfd(0, EFD_CLOEXEC))),
      port_(PortOf(listener_)),
      thread_([this] { Run(); }) {}

DelayingProxy::~DelayingProxy() {
  eventfd_write(end_.Number(), 1);
  thread_.join();
}

void DelayingProxy::Run() {
  prctl(PR_SET_TIMERSLACK, 1UL);  // nanoseconds
  std::list<Tunnel> tunnels;
  for (;;) {
    std::vector<pollfd> polled{{end_.Number(), POLLIN, 0}, {listener_.Number(), POLLIN, 0}};
    Clock::time_point next = Clock::time_point::max();
    for (const Tunnel& tunnel : tunnels) {
      tunnel.AddTo(polled);
      next = std::min(next, tunnel.NextArrival());
    }
    WaitUntil(next, polled);
    if (polled[0].revents != 0) return;
    const pollfd* sockets = &polled[2];
    tunnels.remove_if([&](Tunnel& tunnel) {
      const bool isOver = !tunnel.Receive(sockets, delay_, roundTrips_) || !tunnel.Deliver();
      sockets += 2;
      return isOver;
    });
    if (polled[1].revents != 0) {
      FileDescriptor client(accept4(listener_.Number(), nullptr, nullptr, SOCK_CLOEXEC));
      tunnels.emplace_back(std::move(client), Connect(serverPort_));
    }
  }
}

}  // namespace orlune::bench
