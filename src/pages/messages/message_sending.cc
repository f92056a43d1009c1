#include "pages/messages/message_sending.h"

#include <vector>

#include "base/dates.h"
#include "base/lists.h"
#include "base/text.h"
#include "pages/messages/message_form.h"
#include "pages/messages/recipients.h"
#include "request/component_state.h"
#include "request/texts.h"
#include "store/database_access.h"

namespace orlune {
namespace {

std::string WithoutApostrophes(std::string_view text) {
  return ReplaceAll(text, "'", "&#39;");
}

Statement SuggestionValue(std::string_view suggestion) {
  return suggestion.empty() ? Statement("Null") : Statement("'{}'", suggestion);
}

/// The statements that store a message, one for each recipient.
std::vector<Statement> CopiesOf(const ComponentState& state, const MessageState& message) {
  const std::string sent = FormatDateTime(state.Surroundings->Regional, state.Surroundings->Clock.Now());
  const std::string subject = WithoutApostrophes(message.Subject);
  const std::string content = WithoutApostrophes(message.Content);
  std::vector<Statement> copies;
  for (const std::string& recipient : message.Recipients) {
    if (recipient.empty()) continue;
    copies.push_back(
        Statement("INSERT INTO Messages (Sender, Recipient, SentDate, Subject, Content, Viewed, Suggestion) "
                  "VALUES ('{}', '{}', '{}', '{}', '{}', no, {})",
                  state.LoginName, recipient, sent, subject, content, SuggestionValue(message.Suggestion)));
  }
  return copies;
}

/// Whether `message` can be sent; otherwise its form is shown with what is missing.
bool Check(ComponentState& state, const MessageState& message) {
  state.AlertText += ValidateMessage(state, message);
  if (state.AlertText.empty()) return true;
  MessageState shown = message;
  shown.Subject = WithReferencesShown(message.Subject);
  shown.Content = WithReferencesShown(message.Content);
  ShowMessageForm(state, shown);
  return false;
}

}  // namespace

std::string ValidateMessage(const ComponentState& state, const MessageState& message) {
  std::string errors;
  if (message.Recipients.empty()) errors += LoadText(state, 830);
  if (message.Subject.empty()) errors += LoadText(state, 831);
  if (message.Content.empty()) errors += LoadText(state, 832);
  return errors;
}

bool SendPosted(ComponentState& state, MessageState message) {
  if (!Check(state, message)) return false;
  ExpandGroupRecipients(*state.Database, message.Recipients);
  const std::vector<Statement> copies = CopiesOf(state, message);
  state.Database->ExecuteInOrder(std::vector<StatementText>(copies.begin(), copies.end()));
  return true;
}

bool SendMessage(ComponentState& state, std::string_view sender, std::string_view recipientList,
                 std::string_view subject, std::string_view content, std::string_view suggestion) {
  state.LoginName = sender;
  MessageState message{
      .Msg = {},
      .Recipients = recipientList.empty() ? std::vector<std::string>() : SplitList(recipientList),
      .Subject = std::string(subject),
      .Content = std::string(content),
      .Suggestion = std::string(suggestion)};
  if (!Check(state, message)) return false;
  ExpandGroupRecipients(*state.Database, message.Recipients);
  for (const Statement& copy : CopiesOf(state, message)) state.Database->Execute(copy);
  return true;
}

}  // namespace orlune
