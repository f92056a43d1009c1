#pragma once

#include <string>
#include <string_view>

namespace orlune {

/// Passwords as they are stored: in plain, or as a hash that is expensive to compute. May be used by several
/// threads at once.
class Passwords {
 public:
  virtual ~Passwords() = default;

  /// A hash to store in place of the password.
  virtual std::string Hash(std::string_view password) = 0;
  /// Whether a stored text is a hash and not a password in plain.
  virtual bool IsHash(std::string_view stored) const = 0;
  /// Whether `stored`, a hash or a password in plain, is that of `password`.
  virtual bool AreEqual(std::string_view stored, std::string_view password) = 0;

  /// A short text that tells whether a stored password has changed, and nothing else of it.
  virtual std::string Stamp(std::string_view stored) const = 0;
  /// A password that nobody can guess, easy to type.
  virtual std::string MakeRandom() = 0;
};

}  // namespace orlune
