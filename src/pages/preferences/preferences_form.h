#pragma once

#include <vector>

#include "html/html.h"
#include "model/style_sheet.h"
#include "pages/preferences/display_preferences.h"

namespace orlune {

struct PageContext;

/// The data of the preferences form.
struct PreferencesContent {
  DisplayPreferences Preferences;
  std::vector<StyleSheetChoice> StyleSheets;
};
Html WritePreferencesForm(const PageContext& context, const PreferencesContent& content);

}  // namespace orlune
