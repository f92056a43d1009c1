#pragma once

namespace orlune {

struct Visit;

/// Answers a request of somebody who is not logged in: checks posted credentials, logs in the user that the
/// hosting page has named, or shows the login form.
/// Reads the form fields "Name" and "Passwd". Asks for no right.
void LoginStep(Visit& visit);

}  // namespace orlune
