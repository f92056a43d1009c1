#pragma once

#include <string>
#include <string_view>

namespace orlune {

/// Passwords as they are stored: in plain text, or as a hash that is slow to compute on purpose. Thread-safe.
class Passwords {
 public:
  virtual ~Passwords() = default;

  /// A salted hash to store in place of the password.
  virtual std::string Hash(std::string_view password) = 0;
  /// Whether a stored text is a hash rather than a password in plain text.
  virtual bool IsHash(std::string_view stored) const = 0;
  /// Whether `stored`, a hash or plain text, matches `password`.
  virtual bool AreEqual(std::string_view stored, std::string_view password) = 0;

  /// A short fingerprint of a stored password, which changes with it and reveals nothing of it.
  virtual std::string Stamp(std::string_view stored) const = 0;
  /// A new random password, easy to type.
  virtual std::string MakeRandom() = 0;
};

}  // namespace orlune
