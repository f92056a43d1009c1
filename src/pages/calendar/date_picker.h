#pragma once

namespace orlune {

struct Visit;

/// The month of the query parameter "sd" in a window of its own, where a click fills a date field of the form
/// that opened it: "date1" from the window "win1", "date2" from any other. Shows the current date's month,
/// with an alert, when "sd" is no date. Asks for no right.
void ShowDatePicker(Visit& visit);

}  // namespace orlune
