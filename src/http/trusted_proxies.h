#pragma once

#include <string_view>
#include <utility>
#include <vector>

#include "base/ip_network.h"
#include "http/http_message.h"

namespace orlune {

/// Who sent a request, as far as it is known.
struct Sender {
  IpAddress Address;
  bool IsOverHttps = false;
};

/// The proxies in front of the server, and the only ones whose forwarding headers are believed. May be used
/// by several threads at once.
class TrustedProxies {
 public:
  explicit TrustedProxies(std::vector<IpNetwork> networks) : networks_(std::move(networks)) {}

  /// The peer of a request or, when that is a trusted proxy, the nearest address before it that is not. Reads
  /// "X-Forwarded-For" and "X-Forwarded-Proto", and "Forwarded" when both are missing. An entry that is no
  /// address ends the search at the proxy that wrote it.
  Sender SenderOf(const RequestMessage& request) const;

  bool Include(const IpAddress& address) const;

 private:
  Sender FollowForwardedFor(const RequestMessage& request) const;
  Sender FollowForwarded(const RequestMessage& request) const;

  std::vector<IpNetwork> networks_;
};

}  // namespace orlune
