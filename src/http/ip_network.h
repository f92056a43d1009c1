#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

struct sockaddr;

namespace orlune {

/// The address of a machine, without port and zone. An IPv4 address in the clothes of IPv6
/// ("::ffff:10.0.0.1") is the IPv4 address.
class IpAddress {
 public:
  /// "::", which is nobody's.
  IpAddress() = default;
  /// The address of a socket of IPv4 or IPv6.
  explicit IpAddress(const sockaddr& socketAddress);
  /// Reads a numeric address; nothing when it is none, or has a zone.
  static std::optional<IpAddress> Parse(std::string_view text);

  std::string Text() const;
  bool IsV4() const;
  /// The first `count` bits of an address of 128 bits; 32 bits of IPv4 are the last ones. The others are 0.
  IpAddress FirstBits(unsigned count) const;

  friend bool operator==(const IpAddress&, const IpAddress&) = default;

 private:
  std::array<std::uint8_t, 16> bytes_{};
};

/// A range of addresses that begin alike, or a single one.
class IpNetwork {
 public:
  /// Reads an address, or one with the length of what is common, such as "10.0.0.0/8". Nothing when it is
  /// neither, or when anything stands behind the common part, as in "10.0.0.1/8".
  static std::optional<IpNetwork> Parse(std::string_view text);

  bool Contains(const IpAddress& address) const;

 private:
  IpNetwork(const IpAddress& first, unsigned bits) : first_(first), bits_(bits) {}

  IpAddress first_;
  unsigned bits_;  // of 128
};

}  // namespace orlune
