#include "http/request_guard.h"

#include <gtest/gtest.h>

#include "base/url_encoding.h"

namespace orlune::testing {
namespace {

TEST(RequestGuard, KnowsWhatCouldChangeSomething) {
  const struct {
    const char* Method;
    const char* Query;
    bool Expected;
  } cases[] = {
      {"GET", "", false},
      {"GET", "p=c&cd=3/15/2004", false},
      {"GET", "p=e&act=delete", true},
      {"GET", "p=e&a%63t=x", true},
      {"GET", "p=%6C", true},
      {"HEAD", "p=l", true},
      {"POST", "", true},
      {"GET", "p=ll", false},
      {"GET", "act=&act=x", true},
  };
  for (const auto& c : cases) {
    const RequestMessage request{c.Method, "/a.asp", c.Query, {}, {}};
    EXPECT_EQ(CouldChangeSomething(request, DecodeQuery(c.Query)), c.Expected) << c.Method << " " << c.Query;
  }
}

TEST(RequestGuard, KnowsRequestsOfOtherSites) {
  const struct {
    const char* Site;
    const char* Origin;
    bool Expected;
    bool IsOverHttps = false;
  } cases[] = {
      {"", "", false},
      {"same-origin", "", false},
      {"none", "", false},
      {"cross-site", "", true},
      {"same-site", "", true},
      {"same-origin", "http://evil.example", false},
      {"cross-site", "http://calendar.example:8080", true},
      {"", "http://calendar.example:8080", false},
      {"", "https://Calendar.example:8080", false},
      {"", "http://calendar.example", true},
      {"", "http://calendar.example:8080.evil.example", true},
      {"", "http://evil.example", true},
      {"", "null", true},
      {"", "https://calendar.example:8080", false, true},
      {"", "HTTPS://calendar.example:8080", false, true},
      {"", "http://calendar.example:8080", true, true},
      {"same-origin", "http://calendar.example:8080", false, true},
  };
  for (const auto& c : cases) {
    RequestMessage request{"POST", "/a.asp", "", {}, {}};
    request.Headers.Set("Host", "calendar.example:8080");
    if (*c.Site != 0) request.Headers.Set("Sec-Fetch-Site", c.Site);
    if (*c.Origin != 0) request.Headers.Set("Origin", c.Origin);
    EXPECT_EQ(ComesFromAnotherSite(request, c.IsOverHttps), c.Expected) << c.Site << " " << c.Origin;
  }
}

}  // namespace
}  // namespace orlune::testing
