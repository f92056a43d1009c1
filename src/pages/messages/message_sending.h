#pragma once

#include <string>

#include "pages/messages/message_state.h"

namespace orlune {

struct PageContext;
struct Visit;

/// The alerts for a message that cannot be sent; "" when it can.
std::string ValidateMessage(const PageContext& context, const MessageState& message);

/// Sends `message` to its recipients; groups are replaced by their members. When it is invalid, shows the
/// form again, stores nothing and returns false. Throws DatabaseError; copies stored before it remain.
bool SendPosted(Visit& visit, const MessageState& message);

}  // namespace orlune
