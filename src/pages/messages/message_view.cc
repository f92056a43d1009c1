#include "pages/messages/message_view.h"

#include "base/text.h"
#include "html/form_parts.h"
#include "html/page_frame.h"
#include "pages/messages/message_parts.h"
#include "pages/messages/sender_names.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/database_access.h"
#include "store/field.h"

namespace orlune {
namespace {

/// A button that leads to the query `query` of the script with `id` at its end.
Html LinkButton(const Visit& visit, Text text, Markup query, const HtmlPart& id) {
  return Html("<INPUT TYPE=button VALUE=\"{}\" onClick=\"javascript:window.location='{}?{}{}'\">",
              Attribute(LoadText(visit, text)), ScriptAttribute(visit.Context.Hosting.ScriptName), query, id);
}

Html Buttons(const Visit& visit, std::string_view suggestion, int messageId) {
  Html buttons;
  if (!suggestion.empty()) {
    const HtmlPart id = ScriptAttribute(suggestion);
    buttons.Add("{}&nbsp;{}", LinkButton(visit, Text::kAcceptSuggestion, "p=e&act=accepted&id=", id),
                LinkButton(visit, Text::kDeclineSuggestion, "p=e&act=declined&id=", id));
  }
  return buttons.Add("{}&nbsp;{}", LinkButton(visit, Text::kReplyToMessage, "p=m&act=reply&msg=", messageId),
                     LinkButton(visit, Text::kDeleteMessage, "p=m&act=del&msg=", messageId));
}

void AddMessage(Html& page, const Visit& visit, std::string_view msg) {
  const auto row =
      OpenQuery(visit.Database, Statement("SELECT Sender, Subject, SentDate, Content, MessageID, Suggestion "
                                          "FROM Messages WHERE MessageID = {}",
                                          msg));
  if (!row->Next()) throw DatabaseError("the message to be shown is gone");
  const auto field = [&](std::string_view name) { return row->Get(row->Column(name)); };

  page.Add("<TR><TD WIDTH=15% CLASS=\"captions\">{}: </TD><TD WIDTH=65%>{}</TD></TR>",
           Content(LoadText(visit, Text::kMessageSender)),
           Content(SenderNames(visit.Database).DisplayName(TextOf(field("Sender")))));
  page.Add("<TR><TD CLASS=\"captions\">{}: </TD><TD>{}</TD></TR>",
           Content(LoadText(visit, Text::kMessageDate)),
           Content(SentDateText(visit, DateTimeOf(field("SentDate")))));
  page.Add("<TR><TD CLASS=\"captions\">{}: </TD><TD>{}</TD></TR>",
           Content(LoadText(visit, Text::kMessageSubject)), Content(TextOf(field("Subject"))));
  page.Add("<TR><TD COLSPAN=2><BR>{}<BR><BR></TD></TR><TR><TD COLSPAN=2 ALIGN=CENTER CLASS=\"captions\">{}",
           Content(ReplaceAll(TextOf(field("Content")), "\r\n", "<BR>")),
           Buttons(visit, TextOf(field("Suggestion")), NumberOf(field("MessageID")).value_or(0)));
}

}  // namespace

void ShowMessage(Visit& visit, std::string_view msg) {
  visit.Database.Execute(Statement("UPDATE Messages SET Viewed = Yes WHERE MessageID = {}", msg));

  Html page = PageHead(visit, visit.Context.Hosting.ProductTitle);
  page.Add(MessageToolbar(visit));
  page.Add(TitleBarOpen("70", Html("{}", Content(LoadText(visit, Text::kReceivedMessageTitle))), {}));
  page.Add("<TABLE CELLSPACING={} ALIGN=CENTER WIDTH=100%>", CellSpacing(visit));
  AddMessage(page, visit, msg);
  page.Add(TableClose());
  page.Add(TitleBarClose(visit));
  page.Add(PageFoot(visit));
  page.Add(AlertScript(visit.Alerts));
  WritePage(visit, std::move(page));
}

}  // namespace orlune
