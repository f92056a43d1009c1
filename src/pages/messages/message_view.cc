#include "pages/messages/message_view.h"

#include "base/text.h"
#include "html/form_parts.h"
#include "html/page_frame.h"
#include "pages/messages/message_parts.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/calendars.h"
#include "store/messages.h"

namespace orlune {
namespace {

struct MessageContent {
  ReceivedMessage Message;
  std::string SenderName;
};

std::optional<MessageContent> LoadMessage(Connection& database, const NamedMessages& named) {
  auto message = Ask(database, FindMessage(named));
  if (!message) return std::nullopt;
  const std::string senderName = Ask(database, FriendlyNameOf(message->Sender)).value_or(message->Sender);
  return MessageContent{*std::move(message), senderName};
}

/// A button that goes to the script with the query `query` followed by `id`.
Html LinkButton(const PageContext& context, Text text, Markup query, const HtmlPart& id) {
  return Html("<INPUT TYPE=button VALUE=\"{}\" onClick=\"javascript:window.location='{}?{}{}'\">",
              Attribute(LoadText(context, text)), ScriptAttribute(context.Hosting.ScriptName), query, id);
}

Html Buttons(const PageContext& context, std::string_view suggestion, int messageId) {
  Html buttons;
  if (!suggestion.empty()) {
    const HtmlPart id = ScriptAttribute(suggestion);
    buttons.Add("{}&nbsp;{}", LinkButton(context, Text::kAcceptSuggestion, "p=e&act=accepted&id=", id),
                LinkButton(context, Text::kDeclineSuggestion, "p=e&act=declined&id=", id));
  }
  return buttons.Add("{}&nbsp;{}",
                     LinkButton(context, Text::kReplyToMessage, "p=m&act=reply&msg=", messageId),
                     LinkButton(context, Text::kDeleteMessage, "p=m&act=del&msg=", messageId));
}

void AddMessage(Html& page, const PageContext& context, const MessageContent& content) {
  const ReceivedMessage& message = content.Message;
  page.Add("<TR><TD WIDTH=15% CLASS=\"captions\">{}: </TD><TD WIDTH=65%>{}</TD></TR>",
           Content(LoadText(context, Text::kMessageSender)), Content(content.SenderName));
  page.Add("<TR><TD CLASS=\"captions\">{}: </TD><TD>{}</TD></TR>",
           Content(LoadText(context, Text::kMessageDate)), Content(SentDateText(context, message.SentDate)));
  page.Add("<TR><TD CLASS=\"captions\">{}: </TD><TD>{}</TD></TR>",
           Content(LoadText(context, Text::kMessageSubject)), Content(message.Subject));
  page.Add("<TR><TD COLSPAN=2><BR>{}<BR><BR></TD></TR><TR><TD COLSPAN=2 ALIGN=CENTER CLASS=\"captions\">{}",
           Content(ReplaceAll(message.Content, "\r\n", "<BR>")),
           Buttons(context, message.Suggestion, message.Id));
}

Html WriteMessage(const PageContext& context, const MessageContent& content) {
  Html page = PageHead(context, context.Hosting.ProductTitle);
  page.Add(MessageToolbar(context));
  page.Add(TitleBarOpen("70", Html("{}", Content(LoadText(context, Text::kReceivedMessageTitle))), {}));
  page.Add("<TABLE CELLSPACING={} ALIGN=CENTER WIDTH=100%>", CellSpacing(context));
  AddMessage(page, context, content);
  page.Add(TableClose());
  page.Add(TitleBarClose(context));
  page.Add(PageFoot(context));
  return page;
}

}  // namespace

void ShowMessage(Visit& visit, const NamedMessages& named) {
  MarkAsViewed(visit.Database, named);
  const auto content = LoadMessage(visit.Database, named);
  if (!content) return RefuseMissingMessage(visit);
  Html page = WriteMessage(visit.Context, *content);
  page.Add(AlertScript(visit.Alerts));
  WritePage(visit, std::move(page));
}

}  // namespace orlune
