#pragma once

#include "exchange/participant.h"

namespace orlune {

struct Visit;

// Import in two steps that share nothing on the server, so that any node may answer either of them: the
// preview's form carries the file's text, and the plan is made again of it. Both return false, with an alert,
// when the file cannot be imported; else they have answered. The visitor must have the right to change the
// calendar. Throw DatabaseError.

bool ShowImportPreview(Visit& visit, const SharedCalendar& calendar);
bool ImportPosted(Visit& visit, const SharedCalendar& calendar);

}  // namespace orlune
