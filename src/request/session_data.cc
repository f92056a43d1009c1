#include "request/session_data.h"

#include "request/component_state.h"

namespace orlune {
namespace {

constexpr std::string_view kCookie = "OLOR";

}  // namespace

std::string GetSessionData(const ComponentState& state, std::string_view key) {
  if (state.UseCookie) return std::string(state.Context.Request->CookieValue(kCookie, key));
  return state.Context.Session->Get(key);
}

void SetSessionData(ComponentState& state, std::string_view key, std::string_view value) {
  if (state.UseCookie) {
    state.Context.Response->SetCookieValue(kCookie, key, value);
  } else {
    state.Context.Session->Set(key, value);
  }
}

void RefreshCookie(ComponentState& state, Date expires) {
  if (!state.UseCookie) return;
  state.Context.Response->SetCookiePath(kCookie, state.ScriptName);
  state.Context.Response->SetCookieExpires(kCookie, expires);
}

void Logout(ComponentState& state) {
  if (state.UseCookie) {
    state.Context.Response->ClearCookie(kCookie);
    RefreshCookie(state, state.Today);
    return;
  }
  for (const std::string_view key : {"Login", "Calendar", "CurrentDate", "DisplayMode"}) {
    state.Context.Session->Set(key, "");
  }
}

}  // namespace orlune
