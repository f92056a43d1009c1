#include "base/ip_network.h"

#include <algorithm>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include "base/text.h"

namespace orlune {
namespace {

constexpr std::array<std::uint8_t, 12> kBeforeV4{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF};
constexpr unsigned kBits = 128;
constexpr unsigned kBitsBeforeV4 = 96;

}  // namespace

IpAddress::IpAddress(const sockaddr& socketAddress) {
  if (socketAddress.sa_family == AF_INET) {
    const auto& v4 = reinterpret_cast<const sockaddr_in&>(socketAddress).sin_addr;
    std::copy_n(reinterpret_cast<const std::uint8_t*>(&v4), sizeof v4,
                std::copy(kBeforeV4.begin(), kBeforeV4.end(), bytes_.begin()));
  } else if (socketAddress.sa_family == AF_INET6) {
    const auto& v6 = reinterpret_cast<const sockaddr_in6&>(socketAddress).sin6_addr;
    std::copy_n(reinterpret_cast<const std::uint8_t*>(&v6), sizeof v6, bytes_.begin());
  }
}

std::optional<IpAddress> IpAddress::Parse(std::string_view text) {
  const std::string terminated(text);
  if (terminated.find('\0') != std::string::npos) return std::nullopt;
  IpAddress address;
  if (inet_pton(AF_INET6, terminated.c_str(), address.bytes_.data()) == 1) return address;
  auto* const v4 = std::copy(kBeforeV4.begin(), kBeforeV4.end(), address.bytes_.begin());
  if (inet_pton(AF_INET, terminated.c_str(), v4) == 1) return address;
  return std::nullopt;
}

std::string IpAddress::Text() const {
  std::array<char, INET6_ADDRSTRLEN> text{};
  const bool isV4 = IsV4();
  inet_ntop(isV4 ? AF_INET : AF_INET6, bytes_.data() + (isV4 ? kBeforeV4.size() : 0), text.data(),
            text.size());
  return text.data();
}

bool IpAddress::IsV4() const {
  return std::equal(kBeforeV4.begin(), kBeforeV4.end(), bytes_.begin());
}

IpAddress IpAddress::FirstBits(unsigned count) const {
  IpAddress result;
  std::copy_n(bytes_.begin(), count / 8, result.bytes_.begin());
  if (count % 8 != 0) result.bytes_[count / 8] = bytes_[count / 8] & (0xFF00U >> count % 8 & 0xFFU);
  return result;
}

IpAddress IpAddress::VisitorNetwork() const {
  constexpr unsigned kVisitorBits = 64;
  return IsV4() ? *this : FirstBits(kVisitorBits);
}

std::optional<IpNetwork> IpNetwork::Parse(std::string_view text) {
  const std::size_t slash = text.find('/');
  const auto first = IpAddress::Parse(text.substr(0, slash));
  if (!first) return std::nullopt;
  if (slash == std::string_view::npos) return IpNetwork(*first, kBits);
  const bool isV4 = first->IsV4() && text.find(':') == std::string_view::npos;
  const auto length = WholeNumber<unsigned>(text.substr(slash + 1));
  if (!length || *length > (isV4 ? kBits - kBitsBeforeV4 : kBits)) return std::nullopt;
  const unsigned bits = isV4 ? kBitsBeforeV4 + *length : *length;
  if (first->FirstBits(bits) != *first) return std::nullopt;
  return IpNetwork(*first, bits);
}

bool IpNetwork::Contains(const IpAddress& address) const {
  return address.IsV4() == first_.IsV4() && address.FirstBits(bits_) == first_;
}

}  // namespace orlune
