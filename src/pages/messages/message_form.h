#pragma once

#include <string_view>

#include "pages/messages/message_state.h"

namespace orlune {

struct Visit;

/// The form for a new message with the values of `message`. Throws DatabaseError.
void ShowMessageForm(Visit& visit, const MessageState& message);

/// The same as a reply to the message whose number is `msg`. Throws DatabaseError, also when there is no such
/// message.
void ShowReplyForm(Visit& visit, std::string_view msg);

}  // namespace orlune
