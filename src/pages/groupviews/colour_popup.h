#pragma once

namespace orlune {

struct Visit;

/// A small page that lists the members of the viewed group view in their colours. Requires no right. Throws
/// DatabaseError.
void ShowColourPopup(Visit& visit);

}  // namespace orlune
