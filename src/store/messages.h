#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "base/regional_settings.h"
#include "model/message.h"
#include "store/query.h"

namespace orlune {

// The table Messages: a row for each recipient of a message. What writes throws DatabaseError.

/// The messages that `recipient` received, the oldest first.
Query<std::vector<ListedMessage>> MessagesTo(std::string_view recipient);
/// The message whose number is `msg`. What is no number fails with a DatabaseError.
Query<std::optional<ReceivedMessage>> FindMessage(std::string_view msg);
/// The same without what a reply does not quote: its number and its suggestion.
Query<std::optional<ReceivedMessage>> FindMessageToReplyTo(std::string_view msg);

void MarkAsViewed(Connection& database, std::string_view msg);
/// Deletes the messages numbered in `ids`, which are joined with ", ".
void DeleteMessages(Connection& database, std::string_view ids);

/// Sends a message within the caller's transaction, to the members in place of groups.
void SendMessage(Connection& database, const RegionalSettings& regional, OutgoingMessage message);
/// The same in a transaction of its own. An error leaves the copies that were stored before it.
void SendMessageByItself(Connection& database, const RegionalSettings& regional, OutgoingMessage message);

/// How many messages of `loginName` are not read yet.
Query<int> UnreadMessageCount(std::string_view loginName);

}  // namespace orlune
