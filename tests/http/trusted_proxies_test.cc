#include "http/trusted_proxies.h"

#include <span>
#include <string>

#include <gtest/gtest.h>

namespace orlune::testing {
namespace {

struct SenderCase {
  const char* Peer;
  const char* ForwardedFor;
  const char* Protocol;
  const char* Forwarded;
  const char* Expected;  ///< the address, and "+" when it came over HTTPS
};

std::string SenderOf(const TrustedProxies& proxies, const SenderCase& c) {
  RequestMessage request;
  request.Peer = IpAddress::Parse(c.Peer).value();
  if (*c.ForwardedFor != 0) request.Headers.Set("X-Forwarded-For", c.ForwardedFor);
  if (*c.Protocol != 0) request.Headers.Set("X-Forwarded-Proto", c.Protocol);
  if (*c.Forwarded != 0) request.Headers.Set("Forwarded", c.Forwarded);
  const Sender sender = proxies.SenderOf(request);
  return sender.Address.Text() + (sender.IsOverHttps ? "+" : "");
}

void ExpectSenders(std::span<const SenderCase> cases) {
  const TrustedProxies proxies({IpNetwork::Parse("10.0.0.0/8").value(), IpNetwork::Parse("::1").value()});
  for (const SenderCase& c : cases)
    EXPECT_EQ(SenderOf(proxies, c), c.Expected)
        << c.Peer << " | " << c.ForwardedFor << " | " << c.Protocol << " | " << c.Forwarded;
}

TEST(TrustedProxies, AreFollowedToTheFirstStranger) {
  constexpr SenderCase kCases[] = {
      {"10.0.0.1", "", "", "", "10.0.0.1"},
      {"10.0.0.1", "192.0.2.7", "https", "", "192.0.2.7+"},
      {"::1", "192.0.2.7", "HTTPS", "", "192.0.2.7+"},
      {"::ffff:10.0.0.1", "2001:db8::7", "http", "", "2001:db8::7"},
      {"10.0.0.1", "192.0.2.7, 10.0.0.3 ,\t10.0.0.2", "https", "", "192.0.2.7+"},
      {"10.0.0.1", "10.0.0.3, 10.0.0.2", "", "", "10.0.0.3"},
      {"10.0.0.1", "192.0.2.7:4711", "", "", "192.0.2.7"},
      {"10.0.0.1", "[2001:db8::7]:4711", "", "", "2001:db8::7"},
      {"10.0.0.1", "[2001:db8::7]", "", "", "2001:db8::7"},
      {"10.0.0.1", "192.0.2.7", "http, https", "", "192.0.2.7+"},
  };
  ExpectSenders(kCases);
}

TEST(TrustedProxies, KeepStrangersFromLying) {
  constexpr SenderCase kCases[] = {
      {"192.0.2.9", "192.0.2.7", "https", "for=192.0.2.7;proto=https", "192.0.2.9"},
      {"11.0.0.1", "10.0.0.1", "https", "", "11.0.0.1"},
      {"10.0.0.1", "198.51.100.1, 192.0.2.7", "", "", "192.0.2.7"},
      {"10.0.0.1", "10.0.0.9, 192.0.2.7, 10.0.0.2", "", "", "192.0.2.7"},
      {"10.0.0.1", "\"198.51.100.1, 192.0.2.7", "", "", "192.0.2.7"},
      {"10.0.0.1", "192.0.2.7, unknown, 10.0.0.2", "", "", "10.0.0.2"},
      {"10.0.0.1", "192.0.2.7,, 10.0.0.2", "", "", "10.0.0.2"},
      {"10.0.0.1", "192.0.2.7:", "", "", "10.0.0.1"},
      {"10.0.0.1", "192.0.2.7:8x", "", "", "10.0.0.1"},
      {"10.0.0.1", "[2001:db8::7", "", "", "10.0.0.1"},
      {"10.0.0.1", "[2001:db8::7]8", "", "", "10.0.0.1"},
      {"10.0.0.1", "192.0.2.7, ", "", "", "10.0.0.1"},
      {"10.0.0.1", "", "https, http", "", "10.0.0.1"},
      {"10.0.0.1", "192.0.2.7", "http", "for=198.51.100.1;proto=https", "192.0.2.7"},
  };
  ExpectSenders(kCases);
}

TEST(TrustedProxies, AreReadInTheStandardHeaderToo) {
  constexpr SenderCase kCases[] = {
      {"10.0.0.1", "", "", "for=192.0.2.7", "192.0.2.7"},
      {"10.0.0.1", "", "", "For=192.0.2.7;Proto=https;by=10.0.0.1", "192.0.2.7+"},
      {"10.0.0.1", "", "", "proto=https; for=\"[2001:db8::7]:4711\"", "2001:db8::7+"},
      {"10.0.0.1", "", "", "for=192.0.2.7;proto=https, for=10.0.0.2;proto=http", "192.0.2.7+"},
      {"10.0.0.1", "", "", "for=192.0.2.7;proto=https, for=198.51.100.1", "198.51.100.1"},
      {"10.0.0.1", "", "", "for=192.0.2.7, for=_hidden;proto=https, for=10.0.0.2", "10.0.0.2+"},
      {"10.0.0.1", "", "", "for=unknown;proto=https", "10.0.0.1+"},
      {"10.0.0.1", "", "", "for=\"198.51.100.1, for=192.0.2.7;proto=https", "192.0.2.7+"},
      {"10.0.0.1", "", "", "host=\"a,b;for=198.51.100.1\";for=192.0.2.7", "192.0.2.7"},
      {"10.0.0.1", "", "", "for", "10.0.0.1"},
      {"10.0.0.1", "", "", ";=;,", "10.0.0.1"},
  };
  ExpectSenders(kCases);
}

}  // namespace
}  // namespace orlune::testing
