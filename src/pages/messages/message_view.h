#pragma once

#include <string_view>

namespace orlune {

struct Visit;

/// Shows the message whose number is `msg` and marks it as read. Throws DatabaseError, also when there is no
/// such message.
void ShowMessage(Visit& visit, std::string_view msg);

}  // namespace orlune
