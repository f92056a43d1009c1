#include "pages/messages/messages_page.h"

#include "html/page_frame.h"
#include "pages/messages/message_form.h"
#include "pages/messages/message_list.h"
#include "pages/messages/message_sending.h"
#include "pages/messages/message_view.h"
#include "pages/messages/recipients.h"
#include "request/component_state.h"
#include "request/rights.h"
#include "request/texts.h"
#include "store/database_access.h"

namespace orlune {
namespace {

MessageState ReadMessageState(const ComponentState& state) {
  const Request& request = *state.Context.Request;
  const std::string_view posted = request.FormField("msg");
  return {.Msg = std::string(posted.empty() ? request.QueryParameter("msg") : posted),
          .Recipients = ChosenRecipients(*state.Database, request.FormField("Vastaanottaja")),
          .Subject = std::string(request.FormField("Otsikko")),
          .Content = std::string(request.FormField("Sisalto")),
          .Suggestion = {}};
}

void RedirectToList(ComponentState& state) {
  state.Context.Response->Redirect(state.ScriptName + "?p=m");
}

void Delete(ComponentState& state, const MessageState& message) {
  if (!message.Msg.empty()) {
    state.Database->Execute(Statement("DELETE FROM Messages WHERE MessageID IN ({})", message.Msg));
  }
  RedirectToList(state);
}

void Send(ComponentState& state, MessageState message) {
  if (SendPosted(state, std::move(message))) RedirectToList(state);
}

}  // namespace

void ShowMessagesPage(ComponentState& state) {
  MessageState message = ReadMessageState(state);
  const std::string_view action = state.Context.Request->QueryParameter("act");
  const bool isKnown =
      action == "view" || action == "new" || action == "del" || action == "send" || action == "reply";
  if (!isKnown) return ShowMessageList(state);
  if (!IsLoggedIn(state)) return WritePage(state, ErrorPage(state, LoadText(state, 850)));

  if (action == "view") return ShowMessage(state, message.Msg);
  if (action == "new") return ShowMessageForm(state, message);
  if (action == "del") return Delete(state, message);
  if (action == "reply") return ShowReplyForm(state, message.Msg);
  Send(state, std::move(message));
}

}  // namespace orlune
