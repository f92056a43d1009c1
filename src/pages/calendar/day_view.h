#pragma once

#include "html/html.h"

namespace orlune {

struct Visit;

/// The current date as a timetable: a row for each hour of the user's day, timed occurrences side by side
/// over the hours that they cover, and the others in a column on the right. Throws DatabaseError.
void AddDayView(Html& page, const Visit& visit);

}  // namespace orlune
