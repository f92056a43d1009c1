#pragma once

#include "base/civil_time.h"

namespace orlune {

struct Visit;

/// A month in a window of its own, where a click fills a date field of the form that opened it: "date1" from
/// the window "win1", "date2" from any other. Asks for no right.
void ShowDatePicker(Visit& visit, Date date);

/// The same for the query parameter "sd"; for the current date, with an alert, when that is no date.
void ShowDatePicker(Visit& visit);

}  // namespace orlune
