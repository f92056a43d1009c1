#include "http/address_shares.h"

#include <algorithm>

namespace orlune {

std::optional<AddressShares::Place> AddressShares::Take(const std::optional<IpAddress>& address) {
  const std::optional<IpAddress> network = address ? std::optional(address->VisitorNetwork()) : std::nullopt;
  const std::lock_guard lock(mutex_);
  const auto known = network ? takenBy_.find(*network) : takenBy_.end();
  if (!IsFree(known == takenBy_.end() ? 0 : known->second, !network)) return std::nullopt;
  if (network) ++takenBy_[*network];
  ++taken_;
  return Place(*this, network);
}

bool AddressShares::IsFree(std::size_t taken, bool isProxy) const {
  if (taken_ >= limits_.Total) return false;
  if (taken == 0 && !isProxy) return true;
  const std::size_t unreserved = limits_.Total - std::min(limits_.Total, limits_.Reserved);
  const std::size_t free = unreserved - std::min(unreserved, taken_);
  return free > 0 && (isProxy || taken < std::min(limits_.PerAddress, 2 * free));
}

void AddressShares::GiveBack(const std::optional<IpAddress>& network) {
  const std::lock_guard lock(mutex_);
  --taken_;
  if (!network) return;
  const auto known = takenBy_.find(*network);
  if (--known->second == 0) takenBy_.erase(known);
}

}  // namespace orlune
