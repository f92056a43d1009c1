#pragma once

namespace orlune {

struct Visit;

/// The results of a search: each event with the days on which it occurs, and a checkbox for deleting it.
/// Shows the search form again when the start date is invalid. Reads the form fields "search", "cal",
/// "reptype" or "type" (repetition kind), and "date1". Requires no right; titles of other users' private
/// events are not shown. Throws DatabaseError.
void ShowFoundEvents(Visit& visit);

}  // namespace orlune
