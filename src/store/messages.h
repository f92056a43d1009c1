#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/regional_settings.h"
#include "model/message.h"
#include "store/query.h"

namespace orlune {

// The table Messages: a row for each recipient of a message. Functions that write throw DatabaseError.

/// The messages that `recipient` received, the oldest first.
Query<std::vector<ListedMessage>> MessagesTo(std::string_view recipient);
/// Messages that a request names. What is no number fails with a DatabaseError.
struct NamedMessages {
  std::string Ids;                       ///< their numbers, joined with ", "
  std::optional<std::string> Recipient;  ///< with one, only those that it received
};

/// `message` is a single one.
Query<std::optional<ReceivedMessage>> FindMessage(const NamedMessages& message);
/// The same without what a reply does not quote: its number and its suggestion.
Query<std::optional<ReceivedMessage>> FindMessageToReplyTo(const NamedMessages& message);

void MarkAsViewed(Connection& database, const NamedMessages& message);
void DeleteMessages(Connection& database, const NamedMessages& messages);

/// Sends a message within the caller's transaction. Groups are replaced by their members.
void SendMessage(Connection& database, const RegionalSettings& regional, OutgoingMessage message);
/// The same in a transaction of its own. On an error the copies stored before it remain.
void SendMessageByItself(Connection& database, const RegionalSettings& regional, OutgoingMessage message);

Query<int> UnreadMessageCount(std::string_view loginName);

}  // namespace orlune
