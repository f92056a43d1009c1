#include "pages/messages/messages_page.h"

#include <optional>

#include "base/lists.h"
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

void Refuse(Visit& visit) {
  WritePage(visit, ErrorPage(visit.Context, LoadText(visit.Context, Text::kNoRights)));
}

/// The messages numbered in `msg`; nothing when that is no list of numbers.
std::optional<NamedMessages> Named(const PageContext& context, std::string_view msg) {
  auto ids = RowNumbers(msg);
  if (!ids) return std::nullopt;
  if (!context.Hosting.Strict) return NamedMessages{*std::move(ids), std::nullopt};
  return NamedMessages{*std::move(ids), context.Visitor.LoginName};
}

void Delete(Visit& visit, const MessageState& message) {
  if (!message.Msg.empty()) {
    const auto named = Named(visit.Context, message.Msg);
    if (!named) return Refuse(visit);
    DeleteMessages(visit.Database, *named);
  }
  RedirectToList(visit);
}

void ShowOne(Visit& visit, std::string_view msg, void (*show)(Visit&, const NamedMessages&)) {
  const auto named = RowNumber(msg) ? Named(visit.Context, msg) : std::nullopt;
  if (!named) return Refuse(visit);
  show(visit, *named);
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
  if (!visit.Context.Visitor.IsLoggedIn()) return Refuse(visit);

  if (action == "view") return ShowOne(visit, message.Msg, ShowMessage);
  if (action == "new") return ShowMessageForm(visit, message);
  if (action == "del") return Delete(visit, message);
  if (action == "reply") return ShowOne(visit, message.Msg, ShowReplyForm);
  Send(visit, message);
}

}  // namespace orlune
