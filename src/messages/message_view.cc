#include "messages/message_view.h"

#include "component/component_state.h"
#include "data/database_access.h"
#include "data/field.h"
#include "frame/form_parts.h"
#include "frame/page_frame.h"
#include "frame/text.h"
#include "frame/texts.h"
#include "messages/message_parts.h"
#include "messages/sender_names.h"

namespace orlune {
namespace {

/// A button that leads to the query `query` of the script with `id` at its end.
Html LinkButton(const ComponentState& state, int text, Markup query, const HtmlPart& id) {
  return Html("<INPUT TYPE=button VALUE=\"{}\" onClick=\"javascript:window.location='{}?{}{}'\">",
              Attribute(LoadText(state, text)), ScriptAttribute(state.ScriptName), query, id);
}

Html Buttons(const ComponentState& state, std::string_view suggestion, int messageId) {
  Html buttons;
  if (!suggestion.empty()) {
    const HtmlPart id = ScriptAttribute(suggestion);
    buttons.Add("{}&nbsp;{}", LinkButton(state, 562, "p=e&act=accepted&id=", id),
                LinkButton(state, 563, "p=e&act=declined&id=", id));
  }
  return buttons.Add("{}&nbsp;{}", LinkButton(state, 560, "p=m&act=reply&msg=", messageId),
                     LinkButton(state, 561, "p=m&act=del&msg=", messageId));
}

void AddMessage(Html& page, const ComponentState& state, std::string_view msg) {
  const auto row =
      OpenQuery(*state.Database, Statement("SELECT Sender, Subject, SentDate, Content, MessageID, Suggestion "
                                           "FROM Messages WHERE MessageID = {}",
                                           msg));
  if (!row->Next()) throw DatabaseError("the message to be shown is gone");
  const auto field = [&](std::string_view name) { return row->Get(row->Column(name)); };

  page.Add("<TR><TD WIDTH=15% CLASS=\"captions\">{}: </TD><TD WIDTH=65%>{}</TD></TR>",
           Content(LoadText(state, 502)),
           Content(SenderNames(*state.Database).DisplayName(TextOf(field("Sender")))));
  page.Add("<TR><TD CLASS=\"captions\">{}: </TD><TD>{}</TD></TR>", Content(LoadText(state, 504)),
           Content(SentDateText(state, DateTimeOf(field("SentDate")))));
  page.Add("<TR><TD CLASS=\"captions\">{}: </TD><TD>{}</TD></TR>", Content(LoadText(state, 503)),
           Content(TextOf(field("Subject"))));
  page.Add("<TR><TD COLSPAN=2><BR>{}<BR><BR></TD></TR><TR><TD COLSPAN=2 ALIGN=CENTER CLASS=\"captions\">{}",
           Content(ReplaceAll(TextOf(field("Content")), "\r\n", "<BR>")),
           Buttons(state, TextOf(field("Suggestion")), NumberOf(field("MessageID")).value_or(0)));
}

}  // namespace

void ShowMessage(ComponentState& state, std::string_view msg) {
  state.Database->Execute(Statement("UPDATE Messages SET Viewed = Yes WHERE MessageID = {}", msg));

  Html page = PageHead(state, state.ProductTitle);
  page.Add(MessageToolbar(state));
  page.Add(TitleBarOpen("70", Html("{}", Content(LoadText(state, 540))), {}));
  page.Add("<TABLE CELLSPACING={} ALIGN=CENTER WIDTH=100%>", CellSpacing(state));
  AddMessage(page, state, msg);
  page.Add(TableClose());
  page.Add(TitleBarClose(state));
  page.Add(PageFoot(state));
  page.Add(AlertScript(state));
  WritePage(state, std::move(page));
}

}  // namespace orlune
