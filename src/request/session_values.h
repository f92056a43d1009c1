#pragma once

#include <string>
#include <string_view>

#include "platform/page_host.h"
#include "request/hosting_page.h"

namespace orlune {

/// The values that a user carries from request to request: "Login", "Account", "Calendar", "CurrentDate" and
/// "DisplayMode". They live in the server's session or, with `UseCookie`, in the cookie "OLOR".
class SessionValues {
 public:
  /// `hosting` outlives this.
  SessionValues(const HostingPage& hosting, const ScriptingContext& context, Date today)
      : hosting_(hosting), context_(context), today_(today) {}

  /// "" when there is none. With `UseCookie` a value set by this request reads as it came in.
  std::string Get(std::string_view key) const;
  void Set(std::string_view key, std::string_view value);
  /// Lets the cookie live until the hosting page's `ExpireCookie`; does nothing without `UseCookie`.
  void RefreshCookie();
  /// Forgets all values.
  void Logout();

 private:
  void SetCookieLifetime(Date expires);

  const HostingPage& hosting_;
  ScriptingContext context_;
  Date today_;
};

}  // namespace orlune
