#pragma once

#include <string_view>

namespace orlune {

struct Visit;

/// One message, whose number is `msg`; counts as read from now on. Throws DatabaseError, also when there is
/// no such message.
void ShowMessage(Visit& visit, std::string_view msg);

}  // namespace orlune
