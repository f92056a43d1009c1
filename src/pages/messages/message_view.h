#pragma once

namespace orlune {

struct NamedMessages;
struct Visit;

/// One message, which counts as read from now on. Throws DatabaseError, also when there is no such message,
/// unless the hosting page is strict.
void ShowMessage(Visit& visit, const NamedMessages& named);

}  // namespace orlune
