#pragma once

namespace orlune {

struct Visit;

/// The page on which users connect their devices, let others subscribe to a calendar, and bring events in and
/// out as files. Reads the query parameter "act":
/// - "mkpw" and "mklink" make an app password or a secret link; form fields "device", or "link" and
///   "calendar". The secret is shown on the answering page only. Names are unique for a user, so that sending
///   the form again makes no second key.
/// - "rmpw" and "rmlink" revoke one; form field "key".
/// - "preview" tells what importing a file would do; form fields "calendar" and "file". "import" does it, of
///   the same text in the form field "text".
/// - "export" answers with a file; query parameters "calendar", "date1" and "date2".
///
/// The parameters "new", "changed" and "unchanged" tell what was imported. Requires a login; what is imported
/// to also that the user may change the calendar. Throws DatabaseError.
void ShowSharingPage(Visit& visit);

}  // namespace orlune
