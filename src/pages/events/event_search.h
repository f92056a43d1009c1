#pragma once

#include "model/event_search.h"

namespace orlune {

class Request;
struct Visit;

/// The search of a posted form: the search form, or the list of results, which keeps it in hidden fields.
EventSearch PostedSearch(const Request& request);

/// The search form with the posted values. Reads the form fields "search", "cal", "reptype" and "date1".
/// Requires no right. Throws DatabaseError.
void ShowSearchForm(Visit& visit);

}  // namespace orlune
