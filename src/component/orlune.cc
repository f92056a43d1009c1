#include "component/orlune.h"

#include "base/dates.h"
#include "pages/admin/admin_page.h"
#include "pages/calendar/calendar_page.h"
#include "pages/calendar/date_picker.h"
#include "pages/events/event_page.h"
#include "pages/login/login.h"
#include "pages/messages/messages_page.h"
#include "pages/preferences/preferences_page.h"
#include "request/request_state.h"
#include "request/session_data.h"
#include "request/settings.h"
#include "store/schema_upgrade.h"

namespace orlune {
namespace {

std::string WithTrailingSlash(std::string directory) {
  if (!directory.ends_with('/')) directory += '/';
  return directory;
}

/// Takes the request's connection to `DBPath`. When that fails, writes the open-failure text to the response
/// and returns false.
bool OpenDatabase(ComponentState& state) {
  try {
    state.Database = state.Surroundings->Databases.Open(state.DBPath);
    return true;
  } catch (const DatabaseError&) {
    state.Context.Response->SetStatus(503);
    state.Context.Response->Write("Could not open database " + state.DBPath + ".");
    return false;
  }
}

}  // namespace

Orlune::Orlune(const Surroundings& surroundings) : state_(surroundings) {}

void Orlune::LoginName(std::string name) {
  state_.LoginName = std::move(name);
}

void Orlune::CalName(std::string_view name) {
  if (name.empty()) return;
  if (name.size() >= 2 && name.starts_with('[') && name.ends_with(']'))
    name = name.substr(1, name.size() - 2);
  state_.CalNameFixed = name.starts_with('!');
  if (state_.CalNameFixed) name.remove_prefix(1);
  state_.CalName = name;
}

void Orlune::ImageDir(std::string directory) {
  state_.ImageDir = WithTrailingSlash(std::move(directory));
}
void Orlune::CssDir(std::string directory) {
  state_.CssDir = WithTrailingSlash(std::move(directory));
}
void Orlune::DBPath(std::string path) {
  state_.DBPath = std::move(path);
}
void Orlune::UseCookie(bool use) {
  state_.UseCookie = use;
}
void Orlune::ExpireCookie(Date day) {
  state_.ExpireCookie = day;
}

void Orlune::ExpireCookie(std::string_view day) {
  state_.ExpireCookie = ParseDate(state_.Surroundings->Regional, day).value_or(state_.ExpireCookie);
}

void Orlune::ExitToURL(std::string url) {
  state_.ExitToURL = std::move(url);
}
void Orlune::ShowTitle(bool show) {
  state_.ShowTitle = show;
}
void Orlune::NoMessaging(bool hide) {
  state_.NoMessaging = hide;
}
void Orlune::NoLoginChange(bool hide) {
  state_.NoLoginChange = hide;
}
void Orlune::NoOLORLink(bool hide) {
  state_.NoOLORLink = hide;
}
void Orlune::DemoMode(bool demo) {
  state_.DemoMode = demo;
}

void Orlune::Language(std::string_view name) {
  state_.Localiser = state_.Surroundings->Localisers.Create("OLOR_" + std::string(name) + ".Localise");
}

void Orlune::HTMLHeader(std::string html) {
  state_.HTMLHeader = std::move(html);
}
void Orlune::HTMLFooter(std::string html) {
  state_.HTMLFooter = std::move(html);
}
void Orlune::HeadData(std::string html) {
  state_.HeadData = std::move(html);
}

std::string Orlune::GetSessionData(std::string_view strKey) const {
  return orlune::GetSessionData(state_, strKey);
}

void Orlune::OnStartPage(const ScriptingContext& passedScriptingContext) {
  state_.Context = passedScriptingContext;
  const Request& request = *state_.Context.Request;
  state_.IsCompatibleBrowser =
      request.ServerVariable("HTTP_USER_AGENT").find("compatible") != std::string_view::npos;
  state_.ScriptName = request.ServerVariable("SCRIPT_NAME");
}

void Orlune::Execute() {
  state_.Context.Response->SetExpires(std::chrono::minutes{0});
  if (!OpenDatabase(state_)) return;
  UpgradeSchema(*state_.Database);
  if (const auto page = state_.Context.Request->QueryParameter("p"); !page.empty()) state_.PageName = page;

  const bool isLoggedIn = state_.LoginName.empty() || !GetSessionData("Login").empty();
  if (isLoggedIn && state_.PageName != "l") {
    TakeRequestState(state_);
    if (LoadSettings(state_)) {
      ShowPage();
    } else {
      EndLogin();
    }
  } else {
    LoginOrLogout();
  }
  state_.Database.reset();
}

void Orlune::ShowPage() {
  if (state_.PageName == "c") ShowCalendarPage(state_);
  if (state_.PageName == "a") ShowAdminPage(state_);
  if (state_.PageName == "e") ShowEventPage(state_);
  if (state_.PageName == "m") ShowMessagesPage(state_);
  if (state_.PageName == "p") ShowPreferencesPage(state_);
  if (state_.PageName == "s") ShowDatePicker(state_);
}

/// For a user whose account was deleted or renamed: what they changed from now on would be nobody's.
void Orlune::EndLogin() {
  Logout(state_);
  state_.Context.Response->Redirect(state_.ScriptName);
}

void Orlune::LoginOrLogout() {
  const bool isLeaving = !GetSessionData("Login").empty() && state_.PageName == "l" &&
                         !state_.ExitToURL.empty() && state_.Context.Request->FormFieldCount() == 0;
  Logout(state_);
  if (isLeaving) {
    state_.Context.Response->Redirect(state_.ExitToURL);
  } else {
    LoginStep(state_);
  }
}

}  // namespace orlune
