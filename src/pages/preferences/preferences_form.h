#pragma once

#include "pages/preferences/display_preferences.h"

namespace orlune {

/// The page on which the user chooses `preferences`. Asks for no right. Throws DatabaseError.
void ShowPreferencesForm(Visit& visit, const DisplayPreferences& preferences);

}  // namespace orlune
