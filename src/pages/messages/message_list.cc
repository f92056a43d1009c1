#include "pages/messages/message_list.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "html/form_parts.h"
#include "html/links.h"
#include "html/page_frame.h"
#include "pages/messages/message_parts.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/calendars.h"
#include "store/messages.h"

namespace orlune {
namespace {

struct MessageListContent {
  std::vector<ListedMessage> Messages;
  std::map<std::string, std::string> SenderNames;  ///< by login name
};

MessageListContent LoadMessageList(Connection& database, const Visitor& visitor) {
  MessageListContent content{Ask(database, MessagesTo(visitor.LoginName)), {}};
  std::vector<std::string> senders;
  for (const ListedMessage& message : content.Messages) {
    if (content.SenderNames.emplace(message.Sender, message.Sender).second) senders.push_back(message.Sender);
  }
  std::vector<Query<std::optional<std::string>>> queries;
  queries.reserve(senders.size());
  for (const std::string& sender : senders) queries.push_back(FriendlyNameOf(sender));
  const auto names = AskAll<std::optional<std::string>>(database, queries);
  for (std::size_t i = 0; i < senders.size(); ++i) {
    if (names[i]) content.SenderNames[senders[i]] = *names[i];
  }
  return content;
}

Html HeaderRow(const PageContext& context) {
  return Html(
      "<TR><TD WIDTH=95% CLASS=\"captions\"><TABLE WIDTH=100%><TR>"
      "<TD WIDTH=5% CLASS=\"captions\">&nbsp;</TD>"
      "<TD WIDTH=25% CLASS=\"captions\">{}"
      "<TD WIDTH=45% CLASS=\"captions\">{}"
      "<TD WIDTH=25% CLASS=\"captions\">{}</TD></TR></TABLE></TD>"
      "<TD WIDTH=5% CLASS=\"captions\">&nbsp;</TD></TR>",
      Content(LoadText(context, Text::kMessageSender)), Content(LoadText(context, Text::kMessageSubject)),
      Content(LoadText(context, Text::kMessageDate)));
}

void AddMessageRows(Html& page, const PageContext& context, const MessageListContent& content) {
  const std::string_view hint = LoadText(context, Text::kViewMessage);
  const Html linkAttributes("TITLE=\"{}\" {}", Attribute(hint), StatusHandler(hint));
  for (const ListedMessage& message : content.Messages) {
    page.Add("<TR><TD><TABLE WIDTH=100%><TR><TD ALIGN=CENTER WIDTH=5%><IMG SRC=\"{}{}\"></TD>",
             Attribute(context.Hosting.ImageDir),
             message.IsViewed ? Markup("msg_oldmail.gif") : Markup("msg_newmail.gif"));
    page.Add("<TD WIDTH=25%>{}</TD><TD WIDTH=45%><A HREF=\"{}?p=m&act=view&msg={}\" {}>{}</A></TD>",
             Content(content.SenderNames.at(message.Sender)), Attribute(context.Hosting.ScriptName),
             message.Id, linkAttributes, Content(message.Subject));
    page.Add("<TD WIDTH=25%>{}</TD></TR></TABLE>", Content(SentDateText(context, message.SentDate)));
    page.Add(
        "</TD><TD ALIGN=CENTER CLASS=\"captions\" WIDTH=5%>"
        "<INPUT TYPE=checkbox NAME=\"msg\" VALUE=\"{}\"></TD></TR>",
        message.Id);
  }
  if (content.Messages.empty())
    page.Add("<TR><TD ALIGN=CENTER COLSPAN=2>{}</TD></TR>", Content(LoadText(context, Text::kNoMessages)));
}

Html DeleteRow(const PageContext& context) {
  return Html("<TR><TD COLSPAN=5 ALIGN=CENTER CLASS=\"captions\">{}",
              ActionButton(context, LoadText(context, Text::kDeleteSelectedMessages), Html("p=m&act=del")));
}

Html WriteMessageList(const PageContext& context, const MessageListContent& content) {
  Html page = PageHead(context, context.Hosting.ProductTitle);
  page.Add(PageButton(context, "p=c", Text::kViewCalendar, "cal.gif"));
  page.Add(PageButton(context, "p=m&act=new", Text::kNewMessage, "msg_new.gif"));
  page.Add(TitleBarOpen("90", Html("{}", Content(LoadText(context, Text::kMessagesTitle))), {}));
  page.Add("<FORM METHOD=post ACTION=\"{}?p=m\" NAME=\"acForm\">", Attribute(context.Hosting.ScriptName));
  page.Add("<TABLE CELLSPACING={} ALIGN=CENTER WIDTH=100%>", CellSpacing(context));
  page.Add(HeaderRow(context));
  AddMessageRows(page, context, content);
  page.Add(DeleteRow(context));
  page.Add("</TABLE>");
  return page;
}

}  // namespace

void ShowMessageList(Visit& visit) {
  FinishFormPage(visit,
                 WriteMessageList(visit.Context, LoadMessageList(visit.Database, visit.Context.Visitor)));
}

}  // namespace orlune
