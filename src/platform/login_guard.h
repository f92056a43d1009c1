#pragma once

#include <chrono>
#include <string_view>

namespace orlune {

/// Somebody at `Address` tries a password of the account `Name`. Names are compared ignoring case.
struct LoginAttempt {
  std::string_view Database;
  std::string_view Name;
  std::string_view Address;
};

/// Slows down whoever guesses passwords. Asked around every check of a password. May be used by several
/// threads at once.
class LoginGuard {
 public:
  virtual ~LoginGuard() = default;

  /// Zero when the password may be checked; the attempt then counts as failed until `Succeeded`. Otherwise
  /// how long the visitor has to wait, and nothing is counted.
  virtual std::chrono::seconds Admit(const LoginAttempt& attempt) = 0;
  /// The password of an admitted attempt was wrong, or there is no such account.
  virtual void Failed(const LoginAttempt& attempt) = 0;
  /// The password of an admitted attempt was right.
  virtual void Succeeded(const LoginAttempt& attempt) = 0;
};

}  // namespace orlune
