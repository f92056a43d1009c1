#include "pages/preferences/preferences_page.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "html/page_frame.h"
#include "pages/groupviews/group_view_page.h"
#include "pages/preferences/display_preferences.h"
#include "pages/preferences/password_page.h"
#include "pages/preferences/preferences_form.h"
#include "request/texts.h"
#include "request/visit.h"

namespace orlune {
namespace {

bool IsGroupViewAction(std::string_view action) {
  constexpr std::array<std::string_view, 5> kActions{"groups", "gsave", "gdelete", "gadd", "gcols"};
  return std::find(kActions.begin(), kActions.end(), action) != kActions.end();
}

void SavePreferences(Visit& visit) {
  const DisplayPreferences preferences = PostedDisplayPreferences(visit.Request);
  if (!HasHoursToShow(preferences)) {
    AddAlert(visit, Text::kEndTimeBeforeStartTime);
    return ShowPreferencesForm(visit, preferences);
  }
  StoreDisplayPreferences(visit, preferences);
  visit.Response.Redirect(visit.Context.Hosting.ScriptName);
}

}  // namespace

void ShowPreferencesPage(Visit& visit) {
  const std::string_view action = visit.Request.QueryParameter("act");
  if (IsGroupViewAction(action)) return ShowGroupViewPage(visit);
  if (action == "login") return ShowPasswordForm(visit);
  if (action != "save" && action != "lsave") return ShowPreferencesForm(visit, LoadDisplayPreferences(visit));

  if (!visit.Context.Visitor.IsLoggedIn())
    return WritePage(visit, ErrorPage(visit, LoadText(visit, Text::kNoRights)));
  if (action == "save") return SavePreferences(visit);
  SavePassword(visit);
}

}  // namespace orlune
