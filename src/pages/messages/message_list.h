#pragma once

namespace orlune {

struct Visit;

/// The messages that the user received, the oldest first, with checkboxes for deleting. Throws DatabaseError.
void ShowMessageList(Visit& visit);

}  // namespace orlune
