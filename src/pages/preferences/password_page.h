#pragma once

namespace orlune {

struct Visit;

/// The empty form for a new password. Requires no right.
void ShowPasswordForm(Visit& visit);

/// Changes the user's password, or shows the form again with an alert. Reads the form fields "oldpw",
/// "newpw1" and "newpw2"; requires the old password. Throws DatabaseError.
void SavePassword(Visit& visit);

}  // namespace orlune
