#pragma once

namespace orlune {

struct Visit;

/// The user's preferences, and the way to the password. Reads the query parameter "act": "save" stores the
/// posted preferences, "login" and "lsave" are the password's; any other shows the preferences. "save" reads
/// the form fields "mode", "firstday", "weekend", "clock", "daybegin", "dayend" and "css". What is stored
/// asks for a login.
void ShowPreferencesPage(Visit& visit);

}  // namespace orlune
