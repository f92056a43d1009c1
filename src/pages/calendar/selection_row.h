#pragma once

#include "html/html.h"

namespace orlune {

struct ComponentState;

/// Announces to the database what `SelectionRow` will ask.
void AnnounceSelectionRow(const ComponentState& state);

/// The last row of every view's table, where the user chooses date, calendar and view. It spans `columnCount`
/// columns. Throws DatabaseError.
Html SelectionRow(const ComponentState& state, int columnCount);

}  // namespace orlune
