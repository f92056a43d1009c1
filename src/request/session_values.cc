#include "request/session_values.h"

namespace orlune {

std::string SessionValues::Get(std::string_view key) const {
  if (hosting_.UseCookie) return std::string(context_.Request->CookieValue(kLoginCookie, key));
  return context_.Session->Get(key);
}

void SessionValues::Set(std::string_view key, std::string_view value) {
  if (hosting_.UseCookie) {
    context_.Response->SetCookieValue(kLoginCookie, key, value);
  } else {
    context_.Session->Set(key, value);
  }
}

void SessionValues::RefreshCookie() {
  if (hosting_.UseCookie) SetCookieLifetime(hosting_.ExpireCookie);
}

void SessionValues::SetCookieLifetime(Date expires) {
  context_.Response->SetCookiePath(kLoginCookie, hosting_.ScriptName);
  context_.Response->SetCookieExpires(kLoginCookie, expires);
}

void SessionValues::Logout() {
  if (hosting_.UseCookie) {
    context_.Response->ClearCookie(kLoginCookie);
    SetCookieLifetime(today_);
    return;
  }
  for (const std::string_view key : {"Login", "Account", "Calendar", "CurrentDate", "DisplayMode"}) {
    context_.Session->Set(key, "");
  }
}

}  // namespace orlune
