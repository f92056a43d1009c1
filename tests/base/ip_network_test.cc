#include "base/ip_network.h"

#include <gtest/gtest.h>

namespace orlune::testing {
namespace {

TEST(IpAddress, IsWrittenInOneForm) {
  const std::pair<const char*, const char*> cases[] = {{"10.0.0.1", "10.0.0.1"},
                                                       {"::ffff:10.0.0.1", "10.0.0.1"},
                                                       {"::FFFF:a00:1", "10.0.0.1"},
                                                       {"2001:DB8:0:0::1", "2001:db8::1"},
                                                       {"::", "::"}};
  for (const auto& [text, expected] : cases) EXPECT_EQ(IpAddress::Parse(text).value().Text(), expected);
  for (const char* text : {"", "10.0.0", "10.0.0.256", "010.0.0.1", "10.0.0.1 ", "10.0.0.1:80", "[::1]",
                           "fe80::1%eth0", "localhost"})
    EXPECT_FALSE(IpAddress::Parse(text)) << text;
  EXPECT_FALSE(IpAddress::Parse(std::string_view("10.0.0.1\0.evil", 14)));
}

TEST(IpNetwork, ContainsWhatBeginsAlike) {
  const struct {
    const char *Network, *Inside, *Outside;
  } cases[] = {{"10.0.0.0/8", "10.255.255.255", "11.0.0.0"},
               {"10.0.0.0/8", "::ffff:10.1.2.3", "9.255.255.255"},
               {"192.0.2.128/25", "192.0.2.128", "192.0.2.127"},
               {"192.0.2.1", "192.0.2.1", "192.0.2.2"},
               {"192.0.2.1/32", "192.0.2.1", "192.0.2.0"},
               {"0.0.0.0/0", "203.0.113.9", "2001:db8::1"},
               {"::/0", "2001:db8::1", "203.0.113.9"},
               {"::ffff:10.0.0.0/104", "10.9.9.9", "11.0.0.0"},
               {"2001:db8::/33", "2001:db8:7fff::1", "2001:db8:8000::1"},
               {"::1", "::1", "::"}};
  for (const auto& c : cases) {
    const auto network = IpNetwork::Parse(c.Network);
    ASSERT_TRUE(network) << c.Network;
    EXPECT_TRUE(network->Contains(IpAddress::Parse(c.Inside).value())) << c.Network << " " << c.Inside;
    EXPECT_FALSE(network->Contains(IpAddress::Parse(c.Outside).value())) << c.Network << " " << c.Outside;
  }
}

TEST(IpNetwork, RefusesWhatIsNone) {
  for (const char* text : {"", "/8", "10.0.0.0/", "10.0.0.0/33", "10.0.0.0/-1", "10.0.0.0/8x", "10.0.0.0/ 8",
                           "10.0.0.0/8/8", "10.0.0.1/8", "::/129", "2001:db8::1/64", "::ffff:10.0.0.0/8",
                           "10.0.0.*", "10/8", "all", "fe80::%eth0/64"})
    EXPECT_FALSE(IpNetwork::Parse(text)) << text;
}

}  // namespace
}  // namespace orlune::testing
