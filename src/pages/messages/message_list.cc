#include "pages/messages/message_list.h"

#include <optional>
#include <string>
#include <vector>

#include "html/form_parts.h"
#include "html/links.h"
#include "html/page_frame.h"
#include "pages/messages/message_parts.h"
#include "pages/messages/sender_names.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/database_access.h"
#include "store/field.h"

namespace orlune {
namespace {

Html HeaderRow(const Visit& visit) {
  return Html(
      "<TR><TD WIDTH=95% CLASS=\"captions\"><TABLE WIDTH=100%><TR>"
      "<TD WIDTH=5% CLASS=\"captions\">&nbsp;</TD>"
      "<TD WIDTH=25% CLASS=\"captions\">{}"
      "<TD WIDTH=45% CLASS=\"captions\">{}"
      "<TD WIDTH=25% CLASS=\"captions\">{}</TD></TR></TABLE></TD>"
      "<TD WIDTH=5% CLASS=\"captions\">&nbsp;</TD></TR>",
      Content(LoadText(visit, Text::kMessageSender)), Content(LoadText(visit, Text::kMessageSubject)),
      Content(LoadText(visit, Text::kMessageDate)));
}

struct ListedMessage {
  int Id;
  bool IsViewed;
  std::string Sender;
  std::string Subject;
  std::optional<DateTime> SentDate;
};

std::vector<ListedMessage> ReadMessages(const Visit& visit) {
  const auto rows =
      OpenQuery(visit.Database, Statement("SELECT Sender, Subject, SentDate, MessageID, Viewed FROM Messages "
                                          "WHERE Recipient = '{}' ORDER BY SentDate",
                                          visit.Context.Visitor.LoginName));
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

void AddMessageRows(Html& page, const Visit& visit) {
  const std::string_view hint = LoadText(visit, Text::kViewMessage);
  const Html linkAttributes("TITLE=\"{}\" {}", Attribute(hint), StatusHandler(hint));
  const std::vector<ListedMessage> messages = ReadMessages(visit);
  SenderNames senders(visit.Database);
  for (const ListedMessage& message : messages) senders.Announce(message.Sender);
  for (const ListedMessage& message : messages) {
    page.Add("<TR><TD><TABLE WIDTH=100%><TR><TD ALIGN=CENTER WIDTH=5%><IMG SRC=\"{}{}\"></TD>",
             Attribute(visit.Context.Hosting.ImageDir),
             message.IsViewed ? Markup("msg_oldmail.gif") : Markup("msg_newmail.gif"));
    page.Add("<TD WIDTH=25%>{}</TD><TD WIDTH=45%><A HREF=\"{}?p=m&act=view&msg={}\" {}>{}</A></TD>",
             Content(senders.DisplayName(message.Sender)), Attribute(visit.Context.Hosting.ScriptName),
             message.Id, linkAttributes, Content(message.Subject));
    page.Add("<TD WIDTH=25%>{}</TD></TR></TABLE>", Content(SentDateText(visit, message.SentDate)));
    page.Add(
        "</TD><TD ALIGN=CENTER CLASS=\"captions\" WIDTH=5%>"
        "<INPUT TYPE=checkbox NAME=\"msg\" VALUE=\"{}\"></TD></TR>",
        message.Id);
  }
  if (messages.empty())
    page.Add("<TR><TD ALIGN=CENTER COLSPAN=2>{}</TD></TR>", Content(LoadText(visit, Text::kNoMessages)));
}

Html DeleteRow(const Visit& visit) {
  return Html("<TR><TD COLSPAN=5 ALIGN=CENTER CLASS=\"captions\">{}",
              ActionButton(visit, LoadText(visit, Text::kDeleteSelectedMessages), Html("p=m&act=del")));
}

}  // namespace

void ShowMessageList(Visit& visit) {
  Html page = PageHead(visit, visit.Context.Hosting.ProductTitle);
  page.Add(PageButton(visit, "p=c", Text::kViewCalendar, "cal.gif"));
  page.Add(PageButton(visit, "p=m&act=new", Text::kNewMessage, "msg_new.gif"));
  page.Add(TitleBarOpen("90", Html("{}", Content(LoadText(visit, Text::kMessagesTitle))), {}));
  page.Add("<FORM METHOD=post ACTION=\"{}?p=m\" NAME=\"acForm\">",
           Attribute(visit.Context.Hosting.ScriptName));
  page.Add("<TABLE CELLSPACING={} ALIGN=CENTER WIDTH=100%>", CellSpacing(visit));
  page.Add(HeaderRow(visit));
  AddMessageRows(page, visit);
  page.Add(DeleteRow(visit));
  page.Add("</TABLE>");
  FinishFormPage(visit, std::move(page));
}

}  // namespace orlune
