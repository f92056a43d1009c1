#include "http/trusted_proxies.h"

#include <string>

#include <gtest/gtest.h>

namespace orlune::testing {
namespace {

// The address of who sent a request through a proxy that is trusted, with "+" when it came over HTTPS.
// `headers` are alternately names and values.
std::string Sender(const char* peer, std::initializer_list<std::string_view> headers) {
  RequestMessage request;
  request.Peer = IpAddress::Parse(peer).value();
  for (const auto* name = headers.begin(); name != headers.end(); name += 2)
    request.Headers.Set(name[0], name[1]);
  const TrustedProxies proxies({IpNetwork::Parse("10.0.0.0/8").value(), IpNetwork::Parse("::1").value()});
  const auto sender = proxies.SenderOf(request);
  return sender.Address.Text() + (sender.IsOverHttps ? "+" : "");
}

TEST(TrustedProxies, AreFollowedToTheFirstUntrustedAddress) {
  const std::pair<const char*, const char*> cases[] = {{"", "10.0.0.1"},
                                                       {"2001:db8::7", "2001:db8::7"},
                                                       {"192.0.2.7, 10.0.0.3 ,\t10.0.0.2", "192.0.2.7"},
                                                       {"10.0.0.3, 10.0.0.2", "10.0.0.3"},
                                                       {"192.0.2.7:4711", "192.0.2.7"},
                                                       {"[2001:db8::7]:4711", "2001:db8::7"},
                                                       {"[2001:db8::7]", "2001:db8::7"},
                                                       // What a client writes in front of it is not believed.
                                                       {"198.51.100.1, 192.0.2.7", "192.0.2.7"},
                                                       {"10.0.0.9, 192.0.2.7, 10.0.0.2", "192.0.2.7"},
                                                       {"\"198.51.100.1, 192.0.2.7", "192.0.2.7"},
                                                       // An entry that is no address ends the search.
                                                       {"192.0.2.7, unknown, 10.0.0.2", "10.0.0.2"},
                                                       {"192.0.2.7,, 10.0.0.2", "10.0.0.2"},
                                                       {"192.0.2.7:", "10.0.0.1"},
                                                       {"192.0.2.7:8x", "10.0.0.1"},
                                                       {"[2001:db8::7", "10.0.0.1"},
                                                       {"[2001:db8::7]8", "10.0.0.1"},
                                                       {"192.0.2.7, ", "10.0.0.1"}};
  for (const auto& [nodes, expected] : cases)
    EXPECT_EQ(Sender("10.0.0.1", {"X-Forwarded-For", nodes}), expected) << nodes;
}

TEST(TrustedProxies, TellTheProtocol) {
  const std::pair<const char*, const char*> cases[] = {{"https", "192.0.2.7+"},
                                                       {"HTTPS", "192.0.2.7+"},
                                                       {"http", "192.0.2.7"},
                                                       {"http, https", "192.0.2.7+"},
                                                       {"https, http", "192.0.2.7"}};
  for (const auto& [protocols, expected] : cases)
    EXPECT_EQ(Sender("::1", {"X-Forwarded-For", "192.0.2.7", "X-Forwarded-Proto", protocols}), expected);
}

TEST(TrustedProxies, AreReadInTheStandardHeaderToo) {
  const std::pair<const char*, const char*> cases[] = {
      {"for=192.0.2.7", "192.0.2.7"},
      {"For=192.0.2.7;Proto=https;by=10.0.0.1", "192.0.2.7+"},
      {"proto=https; for=\"[2001:db8::7]:4711\"", "2001:db8::7+"},
      {"for=192.0.2.7;proto=https, for=10.0.0.2;proto=http", "192.0.2.7+"},
      {"for=192.0.2.7;proto=https, for=198.51.100.1", "198.51.100.1"},
      {"for=192.0.2.7, for=_hidden;proto=https, for=10.0.0.2", "10.0.0.2+"},
      {"for=unknown;proto=https", "10.0.0.1+"},
      {"for=\"198.51.100.1, for=192.0.2.7;proto=https", "192.0.2.7+"},
      {"host=\"a,b;for=198.51.100.1\";for=192.0.2.7", "192.0.2.7"},
      {"for", "10.0.0.1"},
      {";=;,", "10.0.0.1"}};
  for (const auto& [header, expected] : cases)
    EXPECT_EQ(Sender("10.0.0.1", {"Forwarded", header}), expected) << header;
  EXPECT_EQ(Sender("10.0.0.1", {"X-Forwarded-Proto", "http", "X-Forwarded-For", "192.0.2.7", "Forwarded",
                                "for=198.51.100.1;proto=https"}),
            "192.0.2.7");
}

TEST(TrustedProxies, KeepOthersFromLying) {
  for (const char* peer : {"192.0.2.9", "11.0.0.1"})
    EXPECT_EQ(Sender(peer, {"X-Forwarded-For", "10.0.0.1", "X-Forwarded-Proto", "https", "Forwarded",
                            "for=192.0.2.7;proto=https"}),
              peer);
}

}  // namespace
}  // namespace orlune::testing
