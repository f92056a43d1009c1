#include "server/request_guard.h"

#include <algorithm>
#include <cctype>
#include <string_view>

namespace orlune {
namespace {

bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
}

}  // namespace

bool CouldChangeSomething(const RequestMessage& request, const NamedTexts& query) {
  return request.Method == "POST" || !query.Find("act").empty() || query.Find("p") == "l";
}

bool ComesFromAnotherSite(const RequestMessage& request) {
  const std::string_view site = request.Headers.Find("Sec-Fetch-Site");
  if (!site.empty()) return site != "same-origin" && site != "none";
  const std::string_view origin = request.Headers.Find("Origin");
  if (origin.empty()) return false;
  const std::size_t scheme = origin.find("://");
  return scheme == std::string_view::npos ||
         !EqualsIgnoringCase(origin.substr(scheme + 3), request.Headers.Find("Host"));
}

}  // namespace orlune
