#pragma once

#include <string_view>

namespace orlune {

struct Visit;

/// Whether `action`, the query parameter "act", is one of the group views rather than of the preferences.
bool IsGroupViewAction(std::string_view action);

/// The group views of the user: selecting a view, its members and their colours. Reads the query parameter
/// "act": "gsave" stores the posted view, "gdelete" deletes one, "gcols" shows the colours of the viewed one;
/// any other shows the form, "gadd" with the selection of members. Reads the number of a view from the form
/// field or else the query parameter "id"; "gsave" reads the form fields "name", "intname", "cals", "return"
/// and each member's colours, its name followed by "BG" and "FG".
/// Only its owner can load, store or delete a view; storing and deleting require a login.
void ShowGroupViewPage(Visit& visit);

}  // namespace orlune
