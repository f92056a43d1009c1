#pragma once

namespace orlune {

struct Visit;

/// The form of an event, saving, deleting, suggesting, answering a suggestion, and the search.
/// Reads the query parameters "id", "act" ("save", "sendform", "send", "delete", "accepted", "declined",
/// "notify", "find", "results"; anything else is the form) and "ret", and the fields of the form: "title",
/// "addinfo", "reptype", "calendar", "date1", "date2", "time1", "time2", "private", "repweekday",
/// "frequency", "repday", "repweekends", "type", "suggstate", "id", "vastaanottaja" (recipients).
/// Changing an event, and seeing a private one, requires the right to change the events of its calendar.
/// Answering requires a login.
void ShowEventPage(Visit& visit);

}  // namespace orlune
