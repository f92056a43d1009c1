#pragma once

namespace orlune {

struct NamedMessages;
struct Visit;

/// One message, which counts as read from now on. Throws DatabaseError.
void ShowMessage(Visit& visit, const NamedMessages& named);

}  // namespace orlune
