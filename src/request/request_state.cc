#include "request/request_state.h"

#include "base/dates.h"
#include "base/text.h"
#include "request/component_state.h"
#include "request/session_data.h"
#include "request/settings.h"
#include "request/texts.h"
#include "store/calendar_list.h"
#include "store/database_access.h"

namespace orlune {
namespace {

void StoreNavigation(ComponentState& state) {
  const Request& request = *state.Context.Request;
  if (const auto calendar = request.QueryParameter("cn"); !calendar.empty()) {
    SetSessionData(state, "Calendar", calendar);
  }
  if (const auto date = request.QueryParameter("cd"); !date.empty()) {
    if (ParseDate(state.Surroundings->Regional, date)) {
      SetSessionData(state, "CurrentDate", date);
    } else {
      AddAlert(state, 810, {date});
    }
  }
  if (const auto mode = request.QueryParameter("dm"); !mode.empty())
    SetSessionData(state, "DisplayMode", mode);
}

bool CalendarExists(Connection& database, std::string_view calName) {
  if (IsGroupView(calName))
    database.Announce(NameQuery("Name", "GroupViews", WithoutFirstCharacter(calName)));
  return NameExists(database, "Name", "Calendars", calName) ||
         NameExists(database, "Name", "GroupViews", WithoutFirstCharacter(calName));
}

void TakeCalendar(ComponentState& state) {
  if (std::string stored = GetSessionData(state, "Calendar"); !stored.empty())
    state.CalName = std::move(stored);
  AnnounceSettings(state);
  if (state.CalName.empty() || CalendarExists(*state.Database, state.CalName)) return;
  SetSessionData(state, "Calendar", state.LoginName);
  state.CalName = state.LoginName;
}

}  // namespace

void TakeRequestState(ComponentState& state) {
  StoreNavigation(state);
  RefreshCookie(state, state.ExpireCookie);
  state.LoginName = GetSessionData(state, "Login");
  TakeCalendar(state);
  if (const auto date = ParseDate(state.Surroundings->Regional, GetSessionData(state, "CurrentDate"))) {
    state.CurrentDate = *date;
  }
  if (std::string mode = GetSessionData(state, "DisplayMode"); !mode.empty())
    state.DisplayMode = std::move(mode);
}

}  // namespace orlune
