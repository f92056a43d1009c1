#pragma once

namespace orlune {

struct ComponentState;

/// A small page with a line for each member of the viewed group view, painted in its colours. Asks for no
/// right. Throws DatabaseError.
void ShowColourPopup(ComponentState& state);

}  // namespace orlune
