#pragma once

namespace orlune {

struct Visit;

/// A small page with a line for each member of the viewed group view, painted in its colours. Asks for no
/// right. Throws DatabaseError.
void ShowColourPopup(Visit& visit);

}  // namespace orlune
