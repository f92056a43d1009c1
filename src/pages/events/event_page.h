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
///
/// An event with listed days, as a device may have made it, keeps them when it is saved: its dates are shown,
/// but are not to be changed. Its form has one more kind of repetition for that; with any other one it gives
/// up its days. Days that were left out of an event stay so as long as its rule would include them.
void ShowEventPage(Visit& visit);

}  // namespace orlune
