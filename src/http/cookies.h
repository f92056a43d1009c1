#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orlune {

/// The values of all cookies of that name in a Cookie header, in the header's order. Views into the header.
std::vector<std::string_view> CookieValues(std::string_view header, std::string_view name);

/// A cookie for the browser, hidden from scripts (HttpOnly) and not sent by other sites (SameSite).
struct BrowserCookie {
  std::string Name;
  std::string Value;
  std::string Path;
  std::optional<std::chrono::seconds> Lifetime;  ///< none: until the browser closes; 0 or less: deleted
  bool Secure = false;                           ///< sent over HTTPS only
};

/// The value of a Set-Cookie header.
std::string FormatSetCookie(const BrowserCookie& cookie);

}  // namespace orlune
