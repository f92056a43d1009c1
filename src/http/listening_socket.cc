#include "http/listening_socket.h"

#include <cerrno>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <system_error>

#include <fmt/format.h>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include "base/configuration_error.h"
#include "base/text.h"

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

bool IsPort(std::string_view text) {
  return IsDigits(text) && WholeNumber<std::uint16_t>(text).has_value();
}

AddressList Resolve(const std::string& address) {
  const auto [host, port] = Split(address);
  addrinfo hints{};
  hints.ai_flags = AI_NUMERICHOST | AI_NUMERICSERV;
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  if (host.empty() || !IsPort(port) || getaddrinfo(host.c_str(), port.c_str(), &hints, &found) != 0)
    throw ConfigurationError(fmt::format(
        "cannot listen at \"{}\": expected a numeric address and a port, such as 127.0.0.1:8080", address));
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
    throw std::runtime_error(fmt::format("cannot listen at {}: {}", address, cause));
  }
  address_ = address.substr(0, address.rfind(':') + 1) + PortOf(descriptor_);
}

ListeningSocket::~ListeningSocket() {
  if (descriptor_ >= 0) close(descriptor_);
}

void CheckListenAddress(const std::string& address) {
  Resolve(address);
}

}  // namespace orlune
