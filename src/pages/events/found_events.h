#pragma once

namespace orlune {

struct Visit;

/// The events that a search found, with the days on which each occurs, and boxes to tick for deleting; the
/// search form again when the start date is no date.
/// Reads the form fields "search", "cal", "reptype" or "type" (repetition kind), and "date1". Asks for no
/// right; titles of other people's private events are not shown, and on a strict hosting page such events are
/// not found. Throws DatabaseError.
void ShowFoundEvents(Visit& visit);

}  // namespace orlune
