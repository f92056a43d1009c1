#include "http/ip_network.h"

#include <gtest/gtest.h>

namespace orlune::testing {
namespace {

TEST(IpAddress, IsWrittenInOneForm) {
  const struct {
    const char* Text;
    const char* Expected;
  } cases[] = {
      {"10.0.0.1", "10.0.0.1"},
      {"::ffff:10.0.0.1", "10.0.0.1"},
      {"::FFFF:a00:1", "10.0.0.1"},
      {"2001:DB8:0:0::1", "2001:db8::1"},
      {"::1", "::1"},
      {"::", "::"},
      {"", "none"},
      {"10.0.0", "none"},
      {"10.0.0.256", "none"},
      {"010.0.0.1", "none"},
      {"10.0.0.1 ", "none"},
      {"10.0.0.1:80", "none"},
      {"[::1]", "none"},
      {"fe80::1%eth0", "none"},
      {"localhost", "none"},
  };
  for (const auto& c : cases) {
    const auto address = IpAddress::Parse(c.Text);
    EXPECT_EQ(address ? address->Text() : "none", c.Expected) << c.Text;
  }
  EXPECT_FALSE(IpAddress::Parse(std::string_view("10.0.0.1\0.evil", 14)));
}

TEST(IpNetwork, ContainsWhatBeginsAlike) {
  const struct {
    const char* Network;
    const char* Address;
    bool Expected;
  } cases[] = {
      {"10.0.0.0/8", "10.255.255.255", true},
      {"10.0.0.0/8", "11.0.0.0", false},
      {"10.0.0.0/8", "::ffff:10.1.2.3", true},
      {"192.0.2.128/25", "192.0.2.128", true},
      {"192.0.2.128/25", "192.0.2.127", false},
      {"192.0.2.1", "192.0.2.1", true},
      {"192.0.2.1", "192.0.2.2", false},
      {"192.0.2.1/32", "192.0.2.0", false},
      {"0.0.0.0/0", "203.0.113.9", true},
      {"0.0.0.0/0", "2001:db8::1", false},
      {"::/0", "2001:db8::1", true},
      {"::/0", "203.0.113.9", false},
      {"::ffff:10.0.0.0/104", "10.9.9.9", true},
      {"2001:db8::/33", "2001:db8:7fff::1", true},
      {"2001:db8::/33", "2001:db8:8000::1", false},
      {"::1", "::1", true},
      {"::1", "::", false},
  };
  for (const auto& c : cases) {
    const auto network = IpNetwork::Parse(c.Network);
    ASSERT_TRUE(network) << c.Network;
    EXPECT_EQ(network->Contains(IpAddress::Parse(c.Address).value()), c.Expected)
        << c.Network << " " << c.Address;
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
