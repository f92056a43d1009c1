#pragma once

#include "exchange/participant.h"

namespace orlune {

struct Visit;

/// Answers with the events of the calendar as a file, or of the period in the query parameters "date1" and
/// "date2"; each may be empty. False, with an alert, when they are no dates. Throws DatabaseError.
bool ExportCalendar(Visit& visit, const SharedCalendar& calendar);

}  // namespace orlune
