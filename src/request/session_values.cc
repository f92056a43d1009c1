#include "request/session_values.h"

namespace orlune {
namespace {

constexpr std::string_view kCookie = "OLOR";

}  // namespace

std::string SessionValues::Get(std::string_view key) const {
  if (hosting_.UseCookie) return std::string(context_.Request->CookieValue(kCookie, key));
  return context_.Session->Get(key);
}

void SessionValues::Set(std::string_view key, std::string_view value) {
  if (hosting_.UseCookie) {
    context_.Response->SetCookieValue(kCookie, key, value);
  } else {
    context_.Session->Set(key, value);
  }
}

void SessionValues::RefreshCookie() {
  if (hosting_.UseCookie) SetCookieLifetime(hosting_.ExpireCookie);
}

void SessionValues::SetCookieLifetime(Date expires) {
  context_.Response->SetCookiePath(kCookie, hosting_.ScriptName);
  context_.Response->SetCookieExpires(kCookie, expires);
}

void SessionValues::Logout() {
  if (hosting_.UseCookie) {
    context_.Response->ClearCookie(kCookie);
    SetCookieLifetime(today_);
    return;
  }
  for (const std::string_view key : {"Login", "Account", "Calendar", "CurrentDate", "DisplayMode"}) {
    context_.Session->Set(key, "");
  }
}

}  // namespace orlune
