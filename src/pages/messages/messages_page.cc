#include "pages/messages/messages_page.h"

#include "html/page_frame.h"
#include "pages/messages/message_form.h"
#include "pages/messages/message_list.h"
#include "pages/messages/message_sending.h"
#include "pages/messages/message_view.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/messages.h"
#include "store/recipients.h"

namespace orlune {
namespace {

MessageState ReadMessageState(const Visit& visit) {
  const Request& request = visit.Request;
  const std::string_view posted = request.FormField("msg");
  return {.Msg = std::string(posted.empty() ? request.QueryParameter("msg") : posted),
          .Recipients = ChosenRecipients(visit.Database, request.FormField("Vastaanottaja")),
          .Subject = std::string(request.FormField("Otsikko")),
          .Content = std::string(request.FormField("Sisalto"))};
}

void RedirectToList(Visit& visit) {
  visit.Response.Redirect(visit.Context.Hosting.ScriptName + "?p=m");
}

void Delete(Visit& visit, const MessageState& message) {
  if (!message.Msg.empty()) DeleteMessages(visit.Database, message.Msg);
  RedirectToList(visit);
}

void Send(Visit& visit, const MessageState& message) {
  if (SendPosted(visit, message)) RedirectToList(visit);
}

}  // namespace

void ShowMessagesPage(Visit& visit) {
  const MessageState message = ReadMessageState(visit);
  const std::string_view action = visit.Request.QueryParameter("act");
  const bool isKnown =
      action == "view" || action == "new" || action == "del" || action == "send" || action == "reply";
  if (!isKnown) return ShowMessageList(visit);
  if (!visit.Context.Visitor.IsLoggedIn())
    return WritePage(visit, ErrorPage(visit.Context, LoadText(visit.Context, Text::kNoRights)));

  if (action == "view") return ShowMessage(visit, message.Msg);
  if (action == "new") return ShowMessageForm(visit, message);
  if (action == "del") return Delete(visit, message);
  if (action == "reply") return ShowReplyForm(visit, message.Msg);
  Send(visit, message);
}

}  // namespace orlune
