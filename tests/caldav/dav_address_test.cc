#include "caldav/dav_address.h"

#include <gtest/gtest.h>

namespace orlune {
namespace {

TEST(DavAddress, IsWhatItsSegmentsSay) {
  const DavLinks links("/calendar.asp");
  const struct {
    const char* Rest;
    const char* Link;  // null: no address
  } kCases[] = {
      {"", ""},
      {"principals", "principals/"},
      {"principals/anna/", "principals/anna/"},
      {"calendars/", "calendars/"},
      {"calendars/anna", "calendars/anna/"},
      {"calendars/anna/%40team%20%C3%A4/", "calendars/anna/@team%20%C3%A4/"},
      {"calendars/anna/sales/12%40a:b;c.ics", "calendars/anna/sales/12@a%3Ab%3Bc.ics"},
      {"calendars/anna/sales/12.ics/", nullptr},
      {"calendars/anna/sales/a/b", nullptr},
      {"calendars//sales/", nullptr},
      {"calendars/anna/../", nullptr},
      {"calendars/anna/%2E%2e/", nullptr},
      {"calendars/anna/sales/a%2Fb", nullptr},
      {"calendars/anna/sales/a%00b", nullptr},
      {"calendars/anna/sales/a%0D%0A", nullptr},
      {"calendars/anna/sales/%E4", nullptr},
      {"calendars/anna/sales/%4", nullptr},
      {"principals/anna/x", nullptr},
      {"other/", nullptr},
  };
  for (const auto& testCase : kCases) {
    const auto address = ReadDavAddress(testCase.Rest);
    ASSERT_EQ(address.has_value(), testCase.Link != nullptr) << testCase.Rest;
    if (!address) continue;
    const std::string link = links.To(*address);
    EXPECT_EQ(link, std::string("/calendar.asp/dav/") + testCase.Link) << testCase.Rest;
    const auto again = links.Read("https://host:8443" + link);
    ASSERT_TRUE(again) << testCase.Rest;
    EXPECT_EQ(links.To(*again), link);
  }
  for (const char* link : {"https://host", "/dav/calendars/", "/calendar.asp/davx", "calendars/"})
    EXPECT_FALSE(links.Read(link)) << link;
}

}  // namespace
}  // namespace orlune
