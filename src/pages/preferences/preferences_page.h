#pragma once

namespace orlune {

struct Visit;

/// The user's preferences, and a link to the password form. Reads the query parameter "act": "save" stores
/// the posted preferences, "login" and "lsave" are the password's; any other shows the preferences. "save"
/// reads the form fields "mode", "firstday", "weekend", "clock", "daybegin", "dayend" and "css". Saving
/// requires a login.
void ShowPreferencesPage(Visit& visit);

}  // namespace orlune
