#include "http/listening_socket.h"

#include <array>
#include <cerrno>
#include <memory>
#include <stdexcept>
#include <system_error>

#include <linux/filter.h>
#include <netdb.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include "base/configuration_error.h"

namespace orlune {
namespace {

using AddressList = std::unique_ptr<addrinfo, decltype(&freeaddrinfo)>;

struct HostAndPort {
  std::string Host;
  std::string Port;
};

HostAndPort Split(const std::string& address) {
  const std::size_t colon = address.rfind(':');
  if (colon == std::string::npos) return {};
  std::string host = address.substr(0, colon);
  if (host.starts_with('[') && host.ends_with(']'))
    return {host.substr(1, host.size() - 2), address.substr(colon + 1)};
  if (host.find(':') != std::string::npos) return {};
  return {std::move(host), address.substr(colon + 1)};
}

bool IsPort(const std::string& text) {
  return !text.empty() && text.size() <= 5 && text.find_first_not_of("0123456789") == std::string::npos &&
         std::stoi(text) <= 65535;
}

AddressList Resolve(const std::string& address) {
  const auto [host, port] = Split(address);
  addrinfo hints{};
  hints.ai_flags = AI_NUMERICHOST | AI_NUMERICSERV;
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  if (host.empty() || !IsPort(port) || getaddrinfo(host.c_str(), port.c_str(), &hints, &found) != 0)
    throw ConfigurationError("cannot listen at \"" + address +
                             "\": expected a numeric address and a port, such as 127.0.0.1:8080");
  return {found, &freeaddrinfo};
}

std::string PortOf(int descriptor) {
  sockaddr_storage bound{};
  socklen_t length = sizeof bound;
  getsockname(descriptor, reinterpret_cast<sockaddr*>(&bound), &length);
  const in_port_t port = bound.ss_family == AF_INET6 ? reinterpret_cast<sockaddr_in6*>(&bound)->sin6_port
                                                     : reinterpret_cast<sockaddr_in*>(&bound)->sin_port;
  return std::to_string(ntohs(port));
}

}  // namespace

ListeningSocket::ListeningSocket(const std::string& address) {
  const AddressList resolved = Resolve(address);
  descriptor_ = socket(resolved->ai_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
  const int yes = 1;
  if (descriptor_ < 0 || setsockopt(descriptor_, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes) != 0 ||
      bind(descriptor_, resolved->ai_addr, resolved->ai_addrlen) != 0 ||
      listen(descriptor_, SOMAXCONN) != 0) {
    const std::string cause =
        errno == EADDRINUSE ? "the port is in use" : std::generic_category().message(errno);
    if (descriptor_ >= 0) close(descriptor_);
    throw std::runtime_error("cannot listen at " + address + ": " + cause);
  }
  address_ = address.substr(0, address.rfind(':') + 1) + PortOf(descriptor_);
}

ListeningSocket::~ListeningSocket() {
  if (descriptor_ >= 0) close(descriptor_);
}

void IgnoreNewConnections(int descriptor) {
  // The packet that begins a connection has the flag SYN and not ACK, in the 14th byte of the TCP header.
  constexpr std::uint32_t kFlagsOffset = 13;
  constexpr std::uint32_t kSyn = 0x02;
  constexpr std::uint32_t kSynAndAck = 0x12;
  std::array<sock_filter, 5> program{{
      BPF_STMT(BPF_LD | BPF_B | BPF_ABS, kFlagsOffset),
      BPF_STMT(BPF_ALU | BPF_AND | BPF_K, kSynAndAck),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, kSyn, 0, 1),
      BPF_STMT(BPF_RET | BPF_K, 0),
      BPF_STMT(BPF_RET | BPF_K, 0xFFFF'FFFF),
  }};
  const sock_fprog filter{static_cast<unsigned short>(program.size()), program.data()};
  setsockopt(descriptor, SOL_SOCKET, SO_ATTACH_FILTER, &filter, sizeof filter);
}

bool HasWaitingConnections(int descriptor) {
  pollfd socket{descriptor, POLLIN, 0};
  return poll(&socket, 1, 0) == 1;
}

void CheckListenAddress(const std::string& address) {
  Resolve(address);
}

}  // namespace orlune
