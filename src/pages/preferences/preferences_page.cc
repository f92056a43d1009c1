#include "pages/preferences/preferences_page.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "html/page_frame.h"
#include "pages/groupviews/group_view_page.h"
#include "pages/preferences/display_preferences.h"
#include "pages/preferences/password_page.h"
#include "pages/preferences/preferences_form.h"
#include "request/component_state.h"
#include "request/rights.h"
#include "request/texts.h"

namespace orlune {
namespace {

bool IsGroupViewAction(std::string_view action) {
  constexpr std::array<std::string_view, 5> kActions{"groups", "gsave", "gdelete", "gadd", "gcols"};
  return std::find(kActions.begin(), kActions.end(), action) != kActions.end();
}

void SavePreferences(ComponentState& state) {
  const DisplayPreferences preferences = PostedDisplayPreferences(*state.Context.Request);
  if (!HasHoursToShow(preferences)) {
    AddAlert(state, 816);
    return ShowPreferencesForm(state, preferences);
  }
  StoreDisplayPreferences(state, preferences);
  state.Context.Response->Redirect(state.ScriptName);
}

}  // namespace

void ShowPreferencesPage(ComponentState& state) {
  const std::string_view action = state.Context.Request->QueryParameter("act");
  if (IsGroupViewAction(action)) return ShowGroupViewPage(state);
  if (action == "login") return ShowPasswordForm(state);
  if (action != "save" && action != "lsave") return ShowPreferencesForm(state, LoadDisplayPreferences(state));

  if (!IsLoggedIn(state)) return WritePage(state, ErrorPage(state, LoadText(state, 850)));
  if (action == "save") return SavePreferences(state);
  SavePassword(state);
}

}  // namespace orlune
