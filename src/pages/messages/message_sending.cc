#include "pages/messages/message_sending.h"

#include "base/text.h"
#include "pages/messages/message_form.h"
#include "request/field_limits.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/messages.h"

namespace orlune {
namespace {

/// Shows the form again, with alerts, and returns false when `message` is invalid.
bool Check(Visit& visit, const MessageState& message) {
  visit.Alerts += ValidateMessage(visit.Context, message);
  CheckLengths(visit, {{Text::kMessageSubject, message.Subject, 255}});
  CheckTextLength(visit, Text::kNewMessageTitle, message.Content);
  if (visit.Alerts.empty())
    CheckSending(visit, message.Recipients, message.Subject.size() + message.Content.size());
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
  SendMessageByItself(visit.Database, visit.Context.Regional,
                      {.Sender = visit.Context.Visitor.LoginName,
                       .Recipients = message.Recipients,
                       .Subject = message.Subject,
                       .Content = message.Content,
                       .SentDate = visit.Clock.Now()});
  return true;
}

}  // namespace orlune
