#include "http/cookies.h"

#include <algorithm>

#include "base/text.h"
#include "http/http_date.h"

namespace orlune {
namespace {

std::string FormatLifetime(std::chrono::seconds lifetime) {
  using std::chrono::floor, std::chrono::seconds, std::chrono::system_clock;
  if (lifetime <= seconds(0)) return "; Max-Age=0; Expires=" + FormatHttpDate({});
  const auto expires = floor<seconds>(system_clock::now()) + lifetime;
  return "; Max-Age=" + std::to_string(lifetime.count()) + "; Expires=" + FormatHttpDate(expires);
}

}  // namespace

std::vector<std::string_view> CookieValues(std::string_view header, std::string_view name) {
  std::vector<std::string_view> values;
  while (!header.empty()) {
    const std::string_view pair = header.substr(0, header.find(';'));
    header.remove_prefix(std::min(pair.size() + 1, header.size()));
    const std::size_t equals = pair.find('=');
    if (equals == std::string_view::npos || TrimBlanks(pair.substr(0, equals)) != name) continue;
    values.push_back(TrimBlanks(pair.substr(equals + 1)));
  }
  return values;
}

BrowserCookie SameSiteCookieBeside(const BrowserCookie& login) {
  BrowserCookie cookie = login;
  cookie.Name = kSameSiteCookie;
  cookie.Value = login.Value.empty() ? "" : "1";
  cookie.SentFromElsewhere = CrossSite::kNever;
  return cookie;
}

std::string FormatSetCookie(const BrowserCookie& cookie) {
  std::string text = cookie.Name + '=' + cookie.Value + "; Path=" + cookie.Path;
  if (cookie.Lifetime) text += FormatLifetime(*cookie.Lifetime);
  text += cookie.SentFromElsewhere == CrossSite::kNever ? "; HttpOnly; SameSite=Strict"
                                                        : "; HttpOnly; SameSite=Lax";
  if (cookie.Secure) text += "; Secure";
  return text;
}

}  // namespace orlune
