#pragma once

#include "base/civil_time.h"
#include "demo/demo_company_rows.h"

namespace orlune::demo {

/// Writes the events of every person and group, from four months before `today` to four months after; what
/// repeats goes on for a year. Throws DatabaseError.
void AddEvents(const RowWriter& rows, Date today);

}  // namespace orlune::demo
