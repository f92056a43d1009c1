#pragma once

namespace orlune {

struct Visit;

/// A popup with the month of the query parameter "sd". A click fills a date field of the form that opened it:
/// "date1" from the window "win1", "date2" from any other. When "sd" is not a date, shows an alert and the
/// month of the current date. Requires no right.
void ShowDatePicker(Visit& visit);

}  // namespace orlune
