#include "pages/preferences/preferences_page.h"

#include <string_view>
#include <utility>

#include "html/page_frame.h"
#include "pages/preferences/display_preferences.h"
#include "pages/preferences/password_page.h"
#include "pages/preferences/preferences_form.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/style_sheets.h"

namespace orlune {
namespace {

void ShowForm(Visit& visit, DisplayPreferences preferences) {
  const PreferencesContent content{std::move(preferences), Ask(visit.Database, StyleSheetChoices())};
  FinishFormPage(visit, WritePreferencesForm(visit.Context, content));
}

void SavePreferences(Visit& visit) {
  DisplayPreferences preferences = PostedDisplayPreferences(visit.Request);
  if (!HasHoursToShow(preferences)) {
    AddAlert(visit, Text::kEndTimeBeforeStartTime);
    return ShowForm(visit, std::move(preferences));
  }
  StoreDisplayPreferences(visit.Database, visit.Context.Visitor, preferences);
  visit.Response.Redirect(visit.Context.Hosting.ScriptName);
}

}  // namespace

void ShowPreferencesPage(Visit& visit) {
  const std::string_view action = visit.Request.QueryParameter("act");
  if (action == "login") return ShowPasswordForm(visit);
  if (action != "save" && action != "lsave")
    return ShowForm(visit, LoadDisplayPreferences(visit.Database, visit.Context.Visitor));

  if (!visit.Context.Visitor.IsLoggedIn())
    return WritePage(visit, ErrorPage(visit.Context, LoadText(visit.Context, Text::kNoRights)));
  if (action == "save") return SavePreferences(visit);
  SavePassword(visit);
}

}  // namespace orlune
