#include "http/https_redirect.h"

#include <string>

namespace orlune {
namespace {

constexpr std::string_view kHostCharacters =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.-_[:]";

// "example.org:80" and "[::1]:80" without their ports.
std::string_view WithoutPort(std::string_view host) {
  const std::size_t colon = host.rfind(':');
  const bool isInAddress = host.ends_with(']');
  return colon == std::string_view::npos || isInAddress ? host : host.substr(0, colon);
}

}  // namespace

ReplyMessage RedirectToHttps(const RequestMessage& request, std::string_view port) {
  const std::string_view host = WithoutPort(request.Headers.Find("Host"));
  const bool isHost = !host.empty() && host.find_first_not_of(kHostCharacters) == std::string_view::npos;
  if (!isHost || !request.Path.starts_with('/')) return Refusal(400);
  std::string url = "https://";
  url += host;
  if (port != "443") url.append(":").append(port);
  url += request.Path;
  if (!request.Query.empty()) url.append("?").append(request.Query);
  return {308, {{"Location", url}, {"Cache-Control", "no-store"}}, std::string()};
}

}  // namespace orlune
