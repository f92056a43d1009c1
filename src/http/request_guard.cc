#include "http/request_guard.h"

#include <string_view>

#include "base/ascii.h"
#include "base/url_encoding.h"

namespace orlune {
namespace {

/// Whether `origin`, such as "https://calendar.example:8443", is not where the request arrived. HTTPS counts
/// as ours in a request without it: there may be a proxy that does not tell.
bool IsForeign(std::string_view origin, std::string_view host, bool isOverHttps) {
  const std::size_t scheme = origin.find("://");
  if (scheme == std::string_view::npos) return true;
  if (isOverHttps && !EqualsIgnoringAsciiCase(origin.substr(0, scheme), "https")) return true;
  return !EqualsIgnoringAsciiCase(origin.substr(scheme + 3), host);
}

std::string_view OriginOf(std::string_view url) {
  const std::size_t scheme = url.find("://");
  return scheme == std::string_view::npos ? url : url.substr(0, url.find_first_of("/?#", scheme + 3));
}

}  // namespace

bool CouldChangeSomething(const RequestMessage& request, const NamedTexts& query) {
  return request.Method == "POST" || !query.Find("act").empty() || query.Find("p") == "l";
}

bool IsLogin(const RequestMessage& request) {
  return request.Method == "POST" && DecodeQuery(request.Query).Find("p") == "l";
}

bool ComesFromAnotherSite(const RequestMessage& request, bool isOverHttps) {
  const std::string_view site = request.Headers.Find("Sec-Fetch-Site");
  if (!site.empty()) return site != "same-origin" && site != "none";
  const std::string_view host = request.Headers.Find("Host");
  const std::string_view origin = request.Headers.Find("Origin");
  if (!origin.empty()) return IsForeign(origin, host, isOverHttps);
  const std::string_view referer = request.Headers.Find("Referer");
  return !referer.empty() && IsForeign(OriginOf(referer), host, isOverHttps);
}

}  // namespace orlune
