#pragma once

#include <cstddef>
#include <map>
#include <mutex>
#include <optional>
#include <utility>

#include "base/ip_network.h"

namespace orlune {

struct ShareLimits {
  std::size_t Total = 10'000;
  std::size_t PerAddress = 6'000;  ///< most for one address, however many are free
  std::size_t Reserved = 1'000;    ///< of `Total`, for addresses that have none yet
};

/// Divides a number of places, such as connections, among the addresses that ask for them. An address gets no
/// more than twice as many as are free without the reserve, so its share shrinks as they fill. An IPv6
/// address counts with its /64 network, whose addresses one visitor can use all. May be used by several
/// threads at once.
class AddressShares {
 public:
  /// A place that was taken; given back with the object, which the shares outlive.
  class Place {
   public:
    Place(Place&& other) noexcept : owner_(std::exchange(other.owner_, nullptr)), network_(other.network_) {}
    Place& operator=(Place&& other) noexcept {
      std::swap(owner_, other.owner_);
      std::swap(network_, other.network_);
      return *this;
    }
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;
    ~Place() {
      if (owner_ != nullptr) owner_->GiveBack(network_);
    }

    /// Whose place it is; nothing for a proxy's.
    const std::optional<IpAddress>& Network() const { return network_; }

   private:
    friend class AddressShares;
    Place(AddressShares& owner, const std::optional<IpAddress>& network)
        : owner_(&owner), network_(network) {}

    AddressShares* owner_;
    std::optional<IpAddress> network_;
  };

  explicit AddressShares(const ShareLimits& limits) : limits_(limits) {}
  AddressShares(const AddressShares&) = delete;
  AddressShares& operator=(const AddressShares&) = delete;

  /// A place for `address`, or for a proxy without an address of its own, whose places nobody's share limits.
  /// Nothing when it has its share, or all are taken.
  std::optional<Place> Take(const std::optional<IpAddress>& address);

 private:
  bool IsFree(std::size_t taken, bool isProxy) const;
  void GiveBack(const std::optional<IpAddress>& network);

  const ShareLimits limits_;
  std::mutex mutex_;
  std::size_t taken_ = 0;
  std::map<IpAddress, std::size_t> takenBy_;
};

}  // namespace orlune
