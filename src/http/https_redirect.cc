#include "http/https_redirect.h"

#include <string>

#include "http/host_name.h"

namespace orlune {
namespace {

constexpr std::string_view kHostCharacters =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.-_[:]";

}  // namespace

ReplyMessage RedirectToHttps(const RequestMessage& request, std::string_view port,
                             std::span<const std::string> allowedHosts) {
  if (!IsAllowedHost(request.Headers.Find("Host"), allowedHosts)) return Refusal(421);
  const std::string_view host = HostName(request.Headers.Find("Host"));
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
