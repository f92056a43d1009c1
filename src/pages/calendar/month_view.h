#pragma once

#include "html/html.h"

namespace orlune {

struct Visit;

/// The month that holds the current date: a row for each week, led by a link to it, and a cell for each day
/// with its occurrences. Throws DatabaseError.
void AddMonthView(Html& page, const Visit& visit);

}  // namespace orlune
