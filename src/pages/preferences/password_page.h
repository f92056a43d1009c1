#pragma once

namespace orlune {

struct Visit;

/// The form for a new password, empty. Asks for no right.
void ShowPasswordForm(Visit& visit);

/// Changes the user's password, or shows the form again with what is wrong. Reads the form fields "oldpw",
/// "newpw1" and "newpw2"; the old password is the right that it asks for. Throws DatabaseError.
void SavePassword(Visit& visit);

}  // namespace orlune
