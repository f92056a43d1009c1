#pragma once

#include <string>
#include <string_view>

#include "pages/messages/message_state.h"

namespace orlune {

struct Visit;

/// Why a message cannot be sent: texts for the request's alert, or "".
std::string ValidateMessage(const Visit& visit, const MessageState& message);

/// Sends `message` to its recipients, groups replaced by their members. With an error in the request, the
/// form is shown again instead and nothing is stored; returns whether it was sent. A DatabaseError leaves the
/// copies that were stored before it.
bool SendPosted(Visit& visit, MessageState message);

/// Sends a message for another page, within that page's transaction. `recipientList` is joined with ", ";
/// `suggestion` is the number of the sender's copy of a suggested event, or "". Returns as `SendPosted` does.
/// Throws DatabaseError.
bool SendMessage(Visit& visit, std::string_view recipientList, std::string_view subject,
                 std::string_view content, std::string_view suggestion = "");

}  // namespace orlune
