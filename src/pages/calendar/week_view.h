#pragma once

#include "html/html.h"

namespace orlune {

struct Visit;

/// The week that holds the current date: one row of seven tall cells with the occurrences of their days.
/// Throws DatabaseError.
void AddWeekView(Html& page, const Visit& visit);

}  // namespace orlune
