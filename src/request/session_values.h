#pragma once

#include <string>
#include <string_view>

#include "platform/page_host.h"
#include "request/hosting_page.h"

namespace orlune {

/// The values of a session: "Login", "Account", "Calendar", "CurrentDate" and "DisplayMode"; in a cookie also
/// "LoginId", which tells one login from another. They are stored in the server's session or, with
/// `UseCookie`, in the cookie "OLOR".
class SessionValues {
 public:
  /// `hosting` outlives this.
  SessionValues(const HostingPage& hosting, const ScriptingContext& context, Date today)
      : hosting_(hosting), context_(context), today_(today) {}

  /// "" when there is none. With `UseCookie`, the value that the request came with, even after a `Set`.
  std::string Get(std::string_view key) const;
  void Set(std::string_view key, std::string_view value);
  /// Sets the cookie's expiry to the hosting page's `ExpireCookie`; does nothing without `UseCookie`.
  void RefreshCookie();
  /// Clears all values.
  void Logout();

 private:
  void SetCookieLifetime(Date expires);

  const HostingPage& hosting_;
  ScriptingContext context_;
  Date today_;
};

}  // namespace orlune
