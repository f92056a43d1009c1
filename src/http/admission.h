#pragma once

#include <optional>

#include <spdlog/logger.h>

#include "http/address_shares.h"
#include "http/http_message.h"
#include "http/occasional_warning.h"
#include "http/trusted_proxies.h"

namespace orlune {

/// What an accepted connection is let in for.
struct AdmissionTicket {
  AddressShares::Place Place;
  bool IsProxy;    ///< brings requests of many visitors
  bool IsRefused;  ///< its first request is answered with 503, and nothing else
};

/// Decides who may connect. Connections of a trusted proxy are limited together only; behind it the requests
/// that are running are limited by visitor. May be used by several threads at once.
class Admission {
 public:
  /// `log` outlives the object.
  Admission(const ShareLimits& limits, TrustedProxies proxies, spdlog::logger& log);

  /// Nothing when there is no place left even for a refusal.
  std::optional<AdmissionTicket> AdmitConnection(const IpAddress& peer);
  /// Nothing when the visitor behind the proxy has too many requests running.
  std::optional<AddressShares::Place> AdmitRequest(const RequestMessage& request);

  /// Most connections at a time, those that are refused included.
  static std::size_t MostConnections(const ShareLimits& limits);

 private:
  const TrustedProxies proxies_;
  AddressShares connections_;
  AddressShares refusals_;
  AddressShares requests_;
  OccasionalWarning connectionRefused_;
  OccasionalWarning requestRefused_;
};

}  // namespace orlune
