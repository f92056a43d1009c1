#pragma once

#include "model/event_search.h"

namespace orlune {

class Request;
struct Visit;

/// The search of a posted form: the search form's, or the one that a list of hits carries on.
EventSearch PostedSearch(const Request& request);

/// The form of a search, with what was posted. Reads the form fields "search", "cal", "reptype" and "date1".
/// Asks for no right. Throws DatabaseError.
void ShowSearchForm(Visit& visit);

}  // namespace orlune
