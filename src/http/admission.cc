#include "http/admission.h"

#include <algorithm>
#include <utility>

namespace orlune {
namespace {

// Those who are refused stay for as long as a request takes to arrive.
ShareLimits RefusalLimits(const ShareLimits& limits) {
  const std::size_t total = std::max<std::size_t>(limits.Total / 16, 1);
  return {total, std::max<std::size_t>(total / 4, 1), 0};
}

}  // namespace

Admission::Admission(const ShareLimits& limits, TrustedProxies proxies, spdlog::logger& log)
    : proxies_(std::move(proxies)),
      connections_(limits),
      refusals_(RefusalLimits(limits)),
      requests_(limits),
      connectionRefused_(log, "refused a connection of "),
      requestRefused_(log, "refused a request, there are too many of ") {}

std::optional<AdmissionTicket> Admission::AdmitConnection(const IpAddress& peer) {
  const bool isProxy = proxies_.Include(peer);
  const std::optional<IpAddress> address = isProxy ? std::nullopt : std::optional(peer);
  if (auto place = connections_.Take(address)) return AdmissionTicket{*std::move(place), isProxy, false};
  connectionRefused_.Report(peer.Text());
  if (auto place = refusals_.Take(address)) return AdmissionTicket{*std::move(place), isProxy, true};
  return std::nullopt;
}

std::optional<AddressShares::Place> Admission::AdmitRequest(const RequestMessage& request) {
  const IpAddress visitor = proxies_.SenderOf(request).Address;
  auto place = requests_.Take(visitor);
  if (!place) requestRefused_.Report(visitor.Text());
  return place;
}

std::size_t Admission::MostConnections(const ShareLimits& limits) {
  return limits.Total + RefusalLimits(limits).Total;
}

}  // namespace orlune
