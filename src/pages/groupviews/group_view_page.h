#pragma once

#include <string_view>

namespace orlune {

struct Visit;

/// Whether the query parameter "act" asks for the group views rather than for the preferences.
bool IsGroupViewAction(std::string_view action);

/// The group views of the user: choosing a view, its members and their colours. Reads the query parameter
/// "act": "gsave" stores the posted view, "gdelete" deletes one, "gcols" shows the colours of the viewed one;
/// any other shows the form, "gadd" with the choice of members. Reads the number of a view from the form
/// field or else the query parameter "id"; "gsave" reads the form fields "name", "intname", "cals", "return"
/// and each member's colours, its name followed by "BG" and "FG".
/// A view is its owner's alone to load, store or delete; storing and deleting ask for a login.
void ShowGroupViewPage(Visit& visit);

}  // namespace orlune
