#pragma once

namespace orlune {

struct Visit;

/// The administration: four managers, each a list of records with a form for one of them.
/// Reads the query parameter "act", a manager's prefix ("um", "gm", "cm" or "tm"), "_" and "list", "save" or
/// "delete"; an unknown manager shows the user manager's list. Reads the form fields "id", "name", "intname",
/// "password", "hide", "memberships" and "adminships". Requires the administrator. Throws DatabaseError; a
/// save or a deletion has then changed nothing.
void ShowAdminPage(Visit& visit);

}  // namespace orlune
