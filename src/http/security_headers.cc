#include "http/security_headers.h"

namespace orlune {

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
