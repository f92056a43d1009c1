#include "messages/message_list.h"

#include <optional>
#include <string>
#include <vector>

#include "component/component_state.h"
#include "data/database_access.h"
#include "data/field.h"
#include "frame/form_parts.h"
#include "frame/links.h"
#include "frame/page_frame.h"
#include "frame/texts.h"
#include "messages/message_parts.h"
#include "messages/sender_names.h"

namespace orlune {
namespace {

Html HeaderRow(const ComponentState& state) {
  return Html(
      "<TR><TD WIDTH=95% CLASS=\"captions\"><TABLE WIDTH=100%><TR>"
      "<TD WIDTH=5% CLASS=\"captions\">&nbsp;</TD>"
      "<TD WIDTH=25% CLASS=\"captions\">{}"
      "<TD WIDTH=45% CLASS=\"captions\">{}"
      "<TD WIDTH=25% CLASS=\"captions\">{}</TD></TR></TABLE></TD>"
      "<TD WIDTH=5% CLASS=\"captions\">&nbsp;</TD></TR>",
      Content(LoadText(state, 502)), Content(LoadText(state, 503)), Content(LoadText(state, 504)));
}

struct ListedMessage {
  int Id;
  bool IsViewed;
  std::string Sender;
  std::string Subject;
  std::optional<DateTime> SentDate;
};

std::vector<ListedMessage> ReadMessages(const ComponentState& state) {
  const auto rows = OpenQuery(*state.Database,
                              Statement("SELECT Sender, Subject, SentDate, MessageID, Viewed FROM Messages "
                                        "WHERE Recipient = '{}' ORDER BY SentDate",
                                        state.LoginName));
  const int sender = rows->Column("Sender");
  const int subject = rows->Column("Subject");
  const int sentDate = rows->Column("SentDate");
  const int messageId = rows->Column("MessageID");
  const int viewed = rows->Column("Viewed");
  std::vector<ListedMessage> messages;
  while (rows->Next()) {
    messages.push_back({NumberOf(rows->Get(messageId)).value_or(0), YesNoOf(rows->Get(viewed)),
                        std::string(TextOf(rows->Get(sender))), std::string(TextOf(rows->Get(subject))),
                        DateTimeOf(rows->Get(sentDate))});
  }
  return messages;
}

void AddMessageRows(Html& page, const ComponentState& state) {
  const std::string_view hint = LoadText(state, 505);
  const Html linkAttributes("TITLE=\"{}\" {}", Attribute(hint), StatusHandler(hint));
  const std::vector<ListedMessage> messages = ReadMessages(state);
  SenderNames senders(*state.Database);
  for (const ListedMessage& message : messages) senders.Announce(message.Sender);
  for (const ListedMessage& message : messages) {
    page.Add("<TR><TD><TABLE WIDTH=100%><TR><TD ALIGN=CENTER WIDTH=5%><IMG SRC=\"{}{}\"></TD>",
             Attribute(state.ImageDir),
             message.IsViewed ? Markup("msg_oldmail.gif") : Markup("msg_newmail.gif"));
    page.Add("<TD WIDTH=25%>{}</TD><TD WIDTH=45%><A HREF=\"{}?p=m&act=view&msg={}\" {}>{}</A></TD>",
             Content(senders.DisplayName(message.Sender)), Attribute(state.ScriptName), message.Id,
             linkAttributes, Content(message.Subject));
    page.Add("<TD WIDTH=25%>{}</TD></TR></TABLE>", Content(SentDateText(state, message.SentDate)));
    page.Add(
        "</TD><TD ALIGN=CENTER CLASS=\"captions\" WIDTH=5%>"
        "<INPUT TYPE=checkbox NAME=\"msg\" VALUE=\"{}\"></TD></TR>",
        message.Id);
  }
  if (messages.empty())
    page.Add("<TR><TD ALIGN=CENTER COLSPAN=2>{}</TD></TR>", Content(LoadText(state, 501)));
}

Html DeleteRow(const ComponentState& state) {
  return Html("<TR><TD COLSPAN=5 ALIGN=CENTER CLASS=\"captions\">{}",
              ActionButton(state, LoadText(state, 530), Html("p=m&act=del")));
}

}  // namespace

void ShowMessageList(ComponentState& state) {
  Html page = PageHead(state, state.ProductTitle);
  page.Add(PageButton(state, "p=c", 163, "cal.gif"));
  page.Add(PageButton(state, "p=m&act=new", 164, "msg_new.gif"));
  page.Add(TitleBarOpen("90", Html("{}", Content(LoadText(state, 500))), {}));
  page.Add("<FORM METHOD=post ACTION=\"{}?p=m\" NAME=\"acForm\">", Attribute(state.ScriptName));
  page.Add("<TABLE CELLSPACING={} ALIGN=CENTER WIDTH=100%>", CellSpacing(state));
  page.Add(HeaderRow(state));
  AddMessageRows(page, state);
  page.Add(DeleteRow(state));
  page.Add("</TABLE>");
  FinishFormPage(state, std::move(page));
}

}  // namespace orlune
