#pragma once

#include <string>
#include <string_view>

namespace orlune {

/// Random texts that nobody can guess, and digests to store in their place. Thread-safe.
class Secrets {
 public:
  virtual ~Secrets() = default;

  /// 26 lower-case letters and digits (130 bits) without those that look alike, safe in an address.
  virtual std::string MakeSecret() = 0;
  /// 64 hexadecimal digits: the BLAKE2b digest of 256 bits (RFC 7693). Enough for secrets of this class,
  /// which cannot be guessed; for passwords that people choose there is `Passwords`.
  virtual std::string Digest(std::string_view text) const = 0;
};

}  // namespace orlune
