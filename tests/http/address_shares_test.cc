#include "http/address_shares.h"

#include <vector>

#include <gtest/gtest.h>

namespace orlune::testing {
namespace {

IpAddress Address(const std::string& text) {
  return IpAddress::Parse(text).value();
}

/// Takes places for as long as there are any.
class Crowd {
 public:
  std::size_t Fill(AddressShares& shares, const std::optional<IpAddress>& address) {
    const std::size_t before = places_.size();
    while (auto place = shares.Take(address)) places_.push_back(*std::move(place));
    return places_.size() - before;
  }
  void Leave() { places_.clear(); }

 private:
  std::vector<AddressShares::Place> places_;
};

TEST(AddressShares, LeavePlacesForTheNextAddressHoweverManyCome) {
  AddressShares shares({1000, 900, 100});
  Crowd crowd;
  EXPECT_EQ(crowd.Fill(shares, Address("192.0.2.1")), 600U);
  EXPECT_EQ(crowd.Fill(shares, Address("192.0.2.2")), 200U);
  EXPECT_EQ(crowd.Fill(shares, std::nullopt), 100U) << "a proxy gets all but the reserve";
  for (int i = 0; i < 100; ++i) EXPECT_EQ(crowd.Fill(shares, Address("198.51.100." + std::to_string(i))), 1U);
  EXPECT_EQ(crowd.Fill(shares, Address("192.0.2.3")), 0U);
  crowd.Leave();
  EXPECT_EQ(crowd.Fill(shares, std::nullopt), 900U);
}

TEST(AddressShares, CountAnIpv6NetworkAsOneAddress) {
  AddressShares shares({1000, 5, 0});
  Crowd crowd;
  EXPECT_EQ(crowd.Fill(shares, Address("2001:db8::1")), 5U);
  EXPECT_EQ(crowd.Fill(shares, Address("2001:db8::ffff:0:0:2")), 0U);
  EXPECT_EQ(crowd.Fill(shares, Address("2001:db8:0:1::1")), 5U);
  EXPECT_EQ(crowd.Fill(shares, Address("192.0.2.1")) + crowd.Fill(shares, Address("192.0.2.2")), 10U);
}

}  // namespace
}  // namespace orlune::testing
