#pragma once

#include <chrono>
#include <string_view>

namespace orlune {

/// An attempt to log in to the account `Name` from the IP address `Address`. Names are compared ignoring
/// case.
struct LoginAttempt {
  std::string_view Database;
  std::string_view Name;
  std::string_view Address;
};

/// Rate limiting of failed logins, against guessed passwords (brute force). Called before and after every
/// check of a password. Thread-safe.
class LoginGuard {
 public:
  virtual ~LoginGuard() = default;

  /// Zero when the password may be checked; the attempt then counts as failed until `Succeeded`. Otherwise
  /// the time until the next attempt is admitted, and this one is not counted.
  virtual std::chrono::seconds Admit(const LoginAttempt& attempt) = 0;
  /// The password of an admitted attempt was wrong, or there is no such account.
  virtual void Failed(const LoginAttempt& attempt) = 0;
  /// The password of an admitted attempt was right.
  virtual void Succeeded(const LoginAttempt& attempt) = 0;
};

}  // namespace orlune
