#pragma once

#include <string>
#include <string_view>

namespace orlune {

struct Visit;

// What every page does that asks for a password: first `AdmitAttempt`, and when it admits, the check and
// `EndAttempt`.

/// Whether the visitor may try a password of the account `name` now. When not, the answer is 429, and the
/// request's errors say how long to wait.
bool AdmitAttempt(Visit& visit, std::string_view name);
/// Tells the login guard how an admitted attempt ended.
void EndAttempt(const Visit& visit, std::string_view name, bool isRight);

/// What to store for a new password: on a strict page its hash.
std::string PasswordToStore(const Visit& visit, std::string_view password);

}  // namespace orlune
