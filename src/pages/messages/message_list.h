#pragma once

namespace orlune {

struct ComponentState;

/// The messages that the user received, the oldest first, with boxes to tick for deleting. Throws
/// DatabaseError.
void ShowMessageList(ComponentState& state);

}  // namespace orlune
