#pragma once

namespace orlune {

struct Visit;

/// The administration: four managers, each a list of records with a form for one of them.
/// Reads the query parameter "act", a manager's prefix ("um", "gm", "cm" or "tm"), "_" and "list", "save" or
/// "delete"; an unknown manager shows the user manager's list. Reads the form fields "id", "name", "intname",
/// "password", "hide", "memberships" and "adminships". Asks for the administrator. Throws DatabaseError; what
/// a save or a deletion changes is then left as it was.
void ShowAdminPage(Visit& visit);

}  // namespace orlune
