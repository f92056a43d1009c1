#include "http/trusted_proxies.h"

#include <algorithm>
#include <optional>

#include "base/ascii.h"
#include "base/text.h"

namespace orlune {
namespace {

// Consumes the last item of a list. From behind, because what untrusted clients sent stands in front, and a
// quote that they left open must not hide what the proxies added.
std::string_view TakeLast(std::string_view& list, char separator) {
  std::size_t begin = list.size();
  for (bool isQuoted = false; begin > 0 && (isQuoted || list[begin - 1] != separator); --begin)
    isQuoted ^= list[begin - 1] == '"';
  const std::string_view last = list.substr(begin);
  list = list.substr(0, begin == 0 ? 0 : begin - 1);
  return TrimBlanks(last);
}

std::string_view WithoutQuotes(std::string_view text) {
  const bool isQuoted = text.size() >= 2 && text.starts_with('"') && text.ends_with('"');
  return isQuoted ? text.substr(1, text.size() - 2) : text;
}

// An address with or without a port: "10.0.0.1:80", "2001:db8::1", "[2001:db8::1]:80".
std::optional<IpAddress> ParseNode(std::string_view node) {
  const std::size_t colon = node.rfind(':');
  const std::size_t before = node.starts_with('[') ? node.rfind(']') + 1 : node.find(':');
  if (colon != std::string_view::npos && colon == before) {
    if (!IsDigits(node.substr(colon + 1))) return std::nullopt;
    node = node.substr(0, colon);
  }
  if (node.starts_with('[') && node.ends_with(']')) node = node.substr(1, node.size() - 2);
  return IpAddress::Parse(node);
}

/// One proxy's entry of the header "Forwarded".
struct ForwardedEntry {
  std::string_view For;
  std::string_view Proto;

  explicit ForwardedEntry(std::string_view entry) {
    while (!entry.empty()) {
      const std::string_view pair = TakeLast(entry, ';');
      const std::size_t equals = std::min(pair.find('='), pair.size());
      const std::string_view value = WithoutQuotes(pair.substr(std::min(equals + 1, pair.size())));
      if (EqualsIgnoringAsciiCase(pair.substr(0, equals), "for")) For = value;
      if (EqualsIgnoringAsciiCase(pair.substr(0, equals), "proto")) Proto = value;
    }
  }
};

}  // namespace

Sender TrustedProxies::SenderOf(const RequestMessage& request) const {
  if (!Include(request.Peer)) return {request.Peer, request.IsOverTls};
  const bool hasForwardedFor =
      !request.Headers.Find("X-Forwarded-For").empty() || !request.Headers.Find("X-Forwarded-Proto").empty();
  return hasForwardedFor ? FollowForwardedFor(request) : FollowForwarded(request);
}

bool TrustedProxies::Include(const IpAddress& address) const {
  return std::any_of(networks_.begin(), networks_.end(),
                     [&address](const IpNetwork& network) { return network.Contains(address); });
}

Sender TrustedProxies::FollowForwardedFor(const RequestMessage& request) const {
  std::string_view protocols = request.Headers.Find("X-Forwarded-Proto");
  Sender sender{request.Peer, EqualsIgnoringAsciiCase(TakeLast(protocols, ','), "https")};
  std::string_view nodes = request.Headers.Find("X-Forwarded-For");
  while (!nodes.empty() && Include(sender.Address)) {
    const auto address = ParseNode(TakeLast(nodes, ','));
    if (!address) break;
    sender.Address = *address;
  }
  return sender;
}

Sender TrustedProxies::FollowForwarded(const RequestMessage& request) const {
  Sender sender{request.Peer, false};
  std::string_view entries = request.Headers.Find("Forwarded");
  while (!entries.empty() && Include(sender.Address)) {
    const ForwardedEntry entry(TakeLast(entries, ','));
    if (!entry.Proto.empty()) sender.IsOverHttps = EqualsIgnoringAsciiCase(entry.Proto, "https");
    const auto address = ParseNode(entry.For);
    if (!address) break;
    sender.Address = *address;
  }
  return sender;
}

}  // namespace orlune
