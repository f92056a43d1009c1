#pragma once

#include <string>

#include "pages/messages/message_state.h"

namespace orlune {

struct PageContext;
struct Visit;

/// Why a message cannot be sent: texts for the request's alert, or "".
std::string ValidateMessage(const PageContext& context, const MessageState& message);

/// Sends `message` to its recipients, groups replaced by their members. With an error in the request, the
/// form is shown again instead and nothing is stored; returns whether it was sent. A DatabaseError leaves the
/// copies that were stored before it.
bool SendPosted(Visit& visit, const MessageState& message);

}  // namespace orlune
