#pragma once

#include "pages/messages/message_state.h"

namespace orlune {

struct NamedMessages;
struct Visit;

/// The form for a new message with the values of `message`. Throws DatabaseError.
void ShowMessageForm(Visit& visit, const MessageState& message);

/// The same as a reply to a message. Throws DatabaseError.
void ShowReplyForm(Visit& visit, const NamedMessages& named);

}  // namespace orlune
