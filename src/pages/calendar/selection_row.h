#pragma once

#include "html/html.h"

namespace orlune {

struct Visit;

/// Announces to the database what `SelectionRow` will ask.
void AnnounceSelectionRow(const Visit& visit);

/// The last row of every view's table, where the user chooses date, calendar and view. It spans `columnCount`
/// columns. Throws DatabaseError.
Html SelectionRow(const Visit& visit, int columnCount);

}  // namespace orlune
