#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

struct sockaddr;

namespace orlune {

/// An IPv4 or IPv6 address, without port and zone. An IPv4-mapped IPv6 address ("::ffff:10.0.0.1") is the
/// IPv4 address.
class IpAddress {
 public:
  /// "::", the unspecified address.
  IpAddress() = default;
  explicit IpAddress(const sockaddr& socketAddress);
  /// Reads a numeric address; nothing for anything else, a zone included.
  static std::optional<IpAddress> Parse(std::string_view text);

  std::string Text() const;
  bool IsV4() const;
  /// The first `count` of 128 bits, the others 0. An IPv4 address is in the last 32 bits.
  IpAddress FirstBits(unsigned count) const;

  /// What one visitor can be expected to have: an IPv4 address itself, or the /64 network of an IPv6 address,
  /// in which a household has as many addresses as it likes.
  IpAddress VisitorNetwork() const;

  friend bool operator==(const IpAddress&, const IpAddress&) = default;
  /// Some order.
  friend bool operator<(const IpAddress& a, const IpAddress& b) { return a.bytes_ < b.bytes_; }

 private:
  std::array<std::uint8_t, 16> bytes_{};
};

/// A range of addresses with a common prefix, or a single address.
class IpNetwork {
 public:
  /// Reads an address, or one with the length of the prefix, such as "10.0.0.0/8". Nothing for anything else,
  /// also when bits behind the prefix are set, as in "10.0.0.1/8".
  static std::optional<IpNetwork> Parse(std::string_view text);

  bool Contains(const IpAddress& address) const;

 private:
  IpNetwork(const IpAddress& first, unsigned bits) : first_(first), bits_(bits) {}

  IpAddress first_;
  unsigned bits_;  // of 128
};

}  // namespace orlune
