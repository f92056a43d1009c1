#pragma once

#include "frame/html.h"

namespace orlune {

struct ComponentState;

/// The last row of every view's table, where the user chooses date, calendar and view. It spans `columnCount`
/// columns. Throws DatabaseError.
Html SelectionRow(const ComponentState& state, int columnCount);

}  // namespace orlune
