#include "http/host_name.h"

#include <algorithm>

#include "base/ascii.h"

namespace orlune {

std::string_view HostName(std::string_view host) {
  const std::size_t bracket = host.find(']');  // of an IPv6 address
  return host.substr(0, host.find(':', bracket == std::string_view::npos ? 0 : bracket));
}

bool IsAllowedHost(std::string_view host, std::span<const std::string> allowed) {
  const std::string_view name = HostName(host);
  return allowed.empty() || std::ranges::any_of(allowed, [name](const std::string& one) {
           return EqualsIgnoringAsciiCase(name, one);
         });
}

}  // namespace orlune
