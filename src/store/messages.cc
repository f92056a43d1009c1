#include "store/messages.h"

#include "base/dates.h"
#include "base/text.h"
#include "store/field.h"
#include "store/recipients.h"
#include "store/rows.h"

namespace orlune {
namespace {

std::vector<ListedMessage> ReadListedMessages(ResultSet& rows) {
  const int sender = rows.Column("Sender");
  const int subject = rows.Column("Subject");
  const int sentDate = rows.Column("SentDate");
  const int messageId = rows.Column("MessageID");
  const int viewed = rows.Column("Viewed");
  std::vector<ListedMessage> messages;
  while (rows.Next()) {
    messages.push_back({NumberOf(rows.Get(messageId)).value_or(0), YesNoOf(rows.Get(viewed)),
                        std::string(TextOf(rows.Get(sender))), std::string(TextOf(rows.Get(subject))),
                        DateTimeOf(rows.Get(sentDate))});
  }
  return messages;
}

ReceivedMessage ReadMessageToReplyTo(const ResultSet& row) {
  ReceivedMessage message;
  message.Sender = TextIn(row, "Sender");
  message.Subject = TextIn(row, "Subject");
  message.Content = TextIn(row, "Content");
  message.SentDate = DateTimeOf(row.Get(row.Column("SentDate")));
  return message;
}

ReceivedMessage ReadMessage(const ResultSet& row) {
  ReceivedMessage message = ReadMessageToReplyTo(row);
  message.Id = NumberOf(row.Get(row.Column("MessageID"))).value_or(0);
  message.Suggestion = TextIn(row, "Suggestion");
  return message;
}

std::string WithoutApostrophes(std::string_view text) {
  return ReplaceAll(text, "'", "&#39;");
}

/// What a condition on the numbers of `messages` goes on with.
Statement AndReceived(const NamedMessages& messages) {
  return messages.Recipient ? Statement(" AND Recipient = '{}'", *messages.Recipient) : Statement();
}

Statement SuggestionValue(std::string_view suggestion) {
  return suggestion.empty() ? Statement("Null") : Statement("'{}'", suggestion);
}

std::vector<Statement> CopiesOf(const RegionalSettings& regional, const OutgoingMessage& message) {
  const std::string sent = FormatDateTime(regional, message.SentDate);
  const std::string subject = WithoutApostrophes(message.Subject);
  const std::string content = WithoutApostrophes(message.Content);
  std::vector<Statement> copies;
  for (const std::string& recipient : message.Recipients) {
    if (recipient.empty()) continue;
    copies.push_back(
        Statement("INSERT INTO Messages (Sender, Recipient, SentDate, Subject, Content, Viewed, Suggestion) "
                  "VALUES ('{}', '{}', '{}', '{}', '{}', no, {})",
                  message.Sender, recipient, sent, subject, content, SuggestionValue(message.Suggestion)));
  }
  return copies;
}

}  // namespace

Query<std::vector<ListedMessage>> MessagesTo(std::string_view recipient) {
  return {Statement("SELECT Sender, Subject, SentDate, MessageID, Viewed FROM Messages "
                    "WHERE Recipient = '{}' ORDER BY SentDate",
                    recipient),
          ReadListedMessages};
}

Query<std::optional<ReceivedMessage>> FindMessage(const NamedMessages& message) {
  return {Statement("SELECT Sender, Subject, SentDate, Content, MessageID, Suggestion "
                    "FROM Messages WHERE MessageID = {}{}",
                    message.Ids, AndReceived(message)),
          [](ResultSet& rows) { return FirstRow(rows, ReadMessage); }};
}

Query<std::optional<ReceivedMessage>> FindMessageToReplyTo(const NamedMessages& message) {
  return {Statement("SELECT Sender, Subject, Content, SentDate FROM Messages WHERE (MessageID = {}){}",
                    message.Ids, AndReceived(message)),
          [](ResultSet& rows) { return FirstRow(rows, ReadMessageToReplyTo); }};
}

void MarkAsViewed(Connection& database, const NamedMessages& message) {
  database.Execute(Statement("UPDATE Messages SET Viewed = Yes WHERE MessageID = {}{}", message.Ids,
                             AndReceived(message)));
}

void DeleteMessages(Connection& database, const NamedMessages& messages) {
  database.Execute(
      Statement("DELETE FROM Messages WHERE MessageID IN ({}){}", messages.Ids, AndReceived(messages)));
}

void SendMessage(Connection& database, const RegionalSettings& regional, OutgoingMessage message) {
  message.Recipients = ExpandGroupRecipients(database, message.Recipients);
  for (const Statement& copy : CopiesOf(regional, message)) database.Execute(copy);
}

void SendMessageByItself(Connection& database, const RegionalSettings& regional, OutgoingMessage message) {
  message.Recipients = ExpandGroupRecipients(database, message.Recipients);
  const std::vector<Statement> copies = CopiesOf(regional, message);
  database.ExecuteInOrder(std::vector<StatementText>(copies.begin(), copies.end()));
}

Query<int> UnreadMessageCount(std::string_view loginName) {
  return {
      Statement("SELECT Count(MessageID) AS MsgCount FROM Messages WHERE Recipient = '{}' AND Viewed = No",
                loginName),
      [](ResultSet& rows) {
        return rows.Next() ? NumberOf(rows.Get(rows.Column("MsgCount"))).value_or(0) : 0;
      }};
}

}  // namespace orlune
