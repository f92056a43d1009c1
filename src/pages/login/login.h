#pragma once

namespace orlune {

struct Visit;

/// Answers a request without a login: checks posted credentials, logs in the user configured for the hosting
/// page, or shows the login form.
/// Reads the form fields "Name" and "Passwd". Requires no right.
void LoginStep(Visit& visit);

}  // namespace orlune
