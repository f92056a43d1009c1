#include "pages/messages/message_sending.h"

<<<<<<< HEAD
#include <vector>

#include "base/dates.h"
#include "base/lists.h"
=======
>>>>>>> events
#include "base/text.h"
#include "pages/messages/message_form.h"
#include "request/texts.h"
#include "request/visit.h"
<<<<<<< HEAD
#include "store/database_access.h"
=======
#include "store/messages.h"
>>>>>>> events

namespace orlune {
namespace {

<<<<<<< HEAD
std::string WithoutApostrophes(std::string_view text) {
  return ReplaceAll(text, "'", "&#39;");
}

Statement SuggestionValue(std::string_view suggestion) {
  return suggestion.empty() ? Statement("Null") : Statement("'{}'", suggestion);
}

/// The statements that store a message, one for each recipient.
std::vector<Statement> CopiesOf(const Visit& visit, const MessageState& message) {
  const std::string sent = FormatDateTime(visit.Context.Regional, visit.Clock.Now());
  const std::string subject = WithoutApostrophes(message.Subject);
  const std::string content = WithoutApostrophes(message.Content);
  std::vector<Statement> copies;
  for (const std::string& recipient : message.Recipients) {
    if (recipient.empty()) continue;
    copies.push_back(
        Statement("INSERT INTO Messages (Sender, Recipient, SentDate, Subject, Content, Viewed, Suggestion) "
                  "VALUES ('{}', '{}', '{}', '{}', '{}', no, {})",
                  visit.Context.Visitor.LoginName, recipient, sent, subject, content,
                  SuggestionValue(message.Suggestion)));
  }
  return copies;
}

=======
>>>>>>> events
/// Whether `message` can be sent; otherwise its form is shown with what is missing.
bool Check(Visit& visit, const MessageState& message) {
  visit.Alerts += ValidateMessage(visit.Context, message);
  if (visit.Alerts.empty()) return true;
  MessageState shown = message;
  shown.Subject = WithReferencesShown(message.Subject);
  shown.Content = WithReferencesShown(message.Content);
  ShowMessageForm(visit, shown);
  return false;
}

}  // namespace

std::string ValidateMessage(const PageContext& context, const MessageState& message) {
  std::string errors;
  if (message.Recipients.empty()) errors += LoadText(context, Text::kRecipientMissing);
  if (message.Subject.empty()) errors += LoadText(context, Text::kSubjectMissing);
  if (message.Content.empty()) errors += LoadText(context, Text::kMessageMissing);
  return errors;
}

bool SendPosted(Visit& visit, const MessageState& message) {
  if (!Check(visit, message)) return false;
<<<<<<< HEAD
  ExpandGroupRecipients(visit.Database, message.Recipients);
  const std::vector<Statement> copies = CopiesOf(visit, message);
  visit.Database.ExecuteInOrder(std::vector<StatementText>(copies.begin(), copies.end()));
  return true;
}

bool SendMessage(Visit& visit, std::string_view recipientList, std::string_view subject,
                 std::string_view content, std::string_view suggestion) {
  MessageState message{
      .Msg = {},
      .Recipients = recipientList.empty() ? std::vector<std::string>() : SplitList(recipientList),
      .Subject = std::string(subject),
      .Content = std::string(content),
      .Suggestion = std::string(suggestion)};
  if (!Check(visit, message)) return false;
  ExpandGroupRecipients(visit.Database, message.Recipients);
  for (const Statement& copy : CopiesOf(visit, message)) visit.Database.Execute(copy);
=======
  SendMessageByItself(visit.Database, visit.Context.Regional,
                      {.Sender = visit.Context.Visitor.LoginName,
                       .Recipients = message.Recipients,
                       .Subject = message.Subject,
                       .Content = message.Content,
                       .SentDate = visit.Clock.Now()});
>>>>>>> events
  return true;
}

}  // namespace orlune
