#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "base/regional_settings.h"
#include "model/message.h"
#include "store/query.h"

namespace orlune {

// The table Messages: a row for each recipient of a message. Functions that write throw DatabaseError.

/// The messages that `recipient` received, the oldest first.
Query<std::vector<ListedMessage>> MessagesTo(std::string_view recipient);
/// The message whose number is `msg`. Throws DatabaseError, when it is run, if `msg` is not a number.
Query<std::optional<ReceivedMessage>> FindMessage(std::string_view msg);
/// The same without `Id` and `Suggestion`, which a reply does not need.
Query<std::optional<ReceivedMessage>> FindMessageToReplyTo(std::string_view msg);

void MarkAsViewed(Connection& database, std::string_view msg);
/// `ids` are message numbers joined with ", ".
void DeleteMessages(Connection& database, std::string_view ids);

/// Sends a message within the caller's transaction. Groups are replaced by their members.
void SendMessage(Connection& database, const RegionalSettings& regional, OutgoingMessage message);
/// The same in a transaction of its own. On an error the copies stored before it remain.
void SendMessageByItself(Connection& database, const RegionalSettings& regional, OutgoingMessage message);

Query<int> UnreadMessageCount(std::string_view loginName);

}  // namespace orlune
