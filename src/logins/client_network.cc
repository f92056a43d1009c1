#include "logins/client_network.h"

#include <algorithm>
#include <array>
#include <iterator>

#include <arpa/inet.h>

namespace orlune {

std::string ClientNetwork(std::string_view address) {
  std::string text(address);
  in6_addr bytes{};
  if (inet_pton(AF_INET6, text.c_str(), &bytes) != 1) return text;
  std::fill(std::begin(bytes.s6_addr) + 8, std::end(bytes.s6_addr), std::uint8_t{0});
  std::array<char, INET6_ADDRSTRLEN> network{};
  return inet_ntop(AF_INET6, &bytes, network.data(), network.size());
}

}  // namespace orlune
