#pragma once

#include <string>

#include "platform/database.h"

namespace orlune {

struct Visit;
class Statement;

/// What a search looks for.
struct EventSearch {
  std::string Text;       ///< looked for in titles and comments; "" finds every event
  std::string Calendar;   ///< a calendar's name, or "" for all that are visible
  std::string Kind;       ///< "none", "day", "weekday", "month" or "year", or "" for any
  std::string StartDate;  ///< as typed
};

/// The search of a posted form: the search form's, or the one that a list of hits carries on.
EventSearch PostedSearch(const Visit& visit);

/// The query for the hits of `search`, the earliest first. Its start date has to be a valid one.
Statement SearchQuery(const Visit& visit, const EventSearch& search);

/// The form of a search, with what was posted. Reads the form fields "search", "cal", "reptype" and "date1".
/// Asks for no right. Throws DatabaseError.
void ShowSearchForm(Visit& visit);

}  // namespace orlune
