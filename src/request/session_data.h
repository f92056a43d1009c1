#pragma once

#include <string>
#include <string_view>

#include "base/civil_time.h"

namespace orlune {

struct ComponentState;

/// The four values that a user carries from request to request: "Login", "Calendar", "CurrentDate" and
/// "DisplayMode". They live in the server's session or, with `UseCookie`, in the cookie "OLOR".

/// "" when there is none. With `UseCookie` a value set by this request reads as it came in.
std::string GetSessionData(const ComponentState& state, std::string_view key);
void SetSessionData(ComponentState& state, std::string_view key, std::string_view value);
/// Lets the cookie live until `expires`; does nothing without `UseCookie`.
void RefreshCookie(ComponentState& state, Date expires);
/// Forgets all four values.
void Logout(ComponentState& state);

}  // namespace orlune
