#include "http/security_headers.h"

#include <algorithm>
#include <iterator>

namespace orlune {

std::vector<Header> HeadersOfParts(const std::vector<Header>& headers) {
  std::vector<Header> kept;
  std::ranges::copy_if(headers, std::back_inserter(kept),
                       [](const Header& header) { return header.first == "X-Content-Type-Options"; });
  return kept;
}

std::vector<Header> SecurityHeaders(std::string_view contentSecurityPolicy) {
  std::vector<Header> headers{
      {"X-Content-Type-Options", "nosniff"},
      {"X-Frame-Options", "SAMEORIGIN"},
      {"Referrer-Policy", "same-origin"},
      {"Permissions-Policy", "camera=(), geolocation=(), microphone=(), payment=(), usb=()"},
  };
  if (!contentSecurityPolicy.empty()) headers.emplace_back("Content-Security-Policy", contentSecurityPolicy);
  return headers;
}

}  // namespace orlune
