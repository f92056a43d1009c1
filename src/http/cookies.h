#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orlune {

/// The values of all cookies of that name in a Cookie header, in the header's order. Views into the header.
std::vector<std::string_view> CookieValues(std::string_view header, std::string_view name);

/// When a browser sends a cookie with what another site made it request (SameSite).
enum class CrossSite {
  kLinks,  ///< with links that were followed, so that these lead to where the user is logged in
  kNever,
};

/// A cookie for the browser, hidden from scripts (HttpOnly).
struct BrowserCookie {
  std::string Name;
  std::string Value;
  std::string Path;
  std::optional<std::chrono::seconds> Lifetime;  ///< none: until the browser closes; 0 or less: deleted
  bool Secure = false;                           ///< sent over HTTPS only
  CrossSite SentFromElsewhere = CrossSite::kLinks;
};

/// The cookie that a browser sends only with requests of our own pages. It says nothing else.
inline constexpr const char* kSameSiteCookie = "orlune_same_site";
/// That cookie, as long-lived as `login`, the one that keeps its user logged in; both are set and deleted
/// together.
BrowserCookie SameSiteCookieBeside(const BrowserCookie& login);

/// The value of a Set-Cookie header.
std::string FormatSetCookie(const BrowserCookie& cookie);

}  // namespace orlune
