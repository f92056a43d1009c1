#pragma once

namespace orlune {

struct Visit;

/// Everything that is done with single events: the form, saving, deleting, suggesting, answering, searching.
/// Reads the query parameters "id", "act" ("save", "sendform", "send", "delete", "accepted", "declined",
/// "notify", "find", "results"; anything else is the form) and "ret", and the fields of the form: "title",
/// "addinfo", "reptype", "calendar", "date1", "date2", "time1", "time2", "private", "repweekday",
/// "frequency", "repday", "repweekends", "type", "suggstate", "id", "vastaanottaja" (recipients).
/// Changing an event asks for the right to change those of its calendar; so does seeing a private one.
/// Answering asks for somebody who is logged in.
void ShowEventPage(Visit& visit);

}  // namespace orlune
