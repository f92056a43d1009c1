#include "http/request_guard.h"

#include <string_view>

#include "base/ascii.h"

namespace orlune {

bool CouldChangeSomething(const RequestMessage& request, const NamedTexts& query) {
  return request.Method == "POST" || !query.Find("act").empty() || query.Find("p") == "l";
}

bool ComesFromAnotherSite(const RequestMessage& request, bool isOverHttps) {
  const std::string_view site = request.Headers.Find("Sec-Fetch-Site");
  if (!site.empty()) return site != "same-origin" && site != "none";
  const std::string_view origin = request.Headers.Find("Origin");
  if (origin.empty()) return false;
  const std::size_t scheme = origin.find("://");
  if (scheme == std::string_view::npos) return true;
  if (isOverHttps && !EqualsIgnoringAsciiCase(origin.substr(0, scheme), "https")) return true;
  return !EqualsIgnoringAsciiCase(origin.substr(scheme + 3), request.Headers.Find("Host"));
}

}  // namespace orlune
