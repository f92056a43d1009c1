#include "pages/messages/message_form.h"

#include <unordered_set>

#include "base/dates.h"
#include "html/calendar_options.h"
#include "html/form_parts.h"
#include "html/page_frame.h"
#include "pages/messages/message_parts.h"
#include "pages/messages/quoting.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/database_access.h"
#include "store/field.h"

namespace orlune {
namespace {

Html SubjectRow(const Visit& visit, const MessageState& message) {
  return Html(
      "<TR><TD>{}</TD><TD ALIGN=RIGHT>{}: <INPUT TYPE=text NAME=\"Otsikko\" VALUE=\"{}\" size={}></TD></TR>",
      Content(LoadText(visit, Text::kMessageRecipients)), Content(LoadText(visit, Text::kMessageSubject)),
      Attribute(message.Subject), InputSize(visit, 18, 38));
}

Html RecipientList(const Visit& visit, const MessageState& message) {
  const std::unordered_set<std::string> chosen(message.Recipients.begin(), message.Recipients.end());
  const auto rows = OpenQuery(visit.Database, Statement("SELECT FriendlyName, Name, IsGroup FROM Calendars "
                                                        "ORDER BY IsGroup, FriendlyName"));
  Html list("<SELECT MULTIPLE SIZE=14 NAME=\"Vastaanottaja\">");
  AddCalendarOptions(
      list, *rows, [&](std::string_view name) { return chosen.contains(std::string(name)); }, "\r\n");
  return list.Add("</SELECT>");
}

Html TextRow(const Visit& visit, const MessageState& message) {
  return Html(
      "<TR><TD>{}</TD>\r\n<TD ALIGN=RIGHT>"
      "<TEXTAREA COLS=40 ROWS=12 WRAP=soft NAME=\"Sisalto\">{}</TEXTAREA></TD></TR>",
      RecipientList(visit, message), TextAreaContent(message.Content));
}

Html SendRow(const Visit& visit) {
  return Html("<TR><TD COLSPAN=2 ALIGN=CENTER CLASS=\"captions\"><INPUT TYPE=submit VALUE=\"{}\">",
              Attribute(LoadText(visit, Text::kSendMessage)));
}

}  // namespace

void ShowMessageForm(Visit& visit, const MessageState& message) {
  Html page = PageHead(visit, visit.Context.Hosting.ProductTitle);
  page.Add(MessageToolbar(visit));
  page.Add(TitleBarOpen("", Html("{}", Content(LoadText(visit, Text::kNewMessageTitle))), {}));
  page.Add("<FORM method=POST action=\"{}?p=m&act=send\" NAME=\"acForm\">",
           Attribute(visit.Context.Hosting.ScriptName));
  page.Add(
      "<TABLE CELLSPACING={} ALIGN=CENTER WIDTH=100%><TR><TD>"
      "<TABLE WIDTH=100% CELLPADDING=5>",
      CellSpacing(visit));
  page.Add(SubjectRow(visit, message));
  page.Add(TextRow(visit, message));
  page.Add(SendRow(visit));
  page.Add(TableClose());
  page.Add(TableClose());
  FinishFormPage(visit, std::move(page));
}

void ShowReplyForm(Visit& visit, std::string_view msg) {
  const auto row = OpenQuery(
      visit.Database,
      Statement("SELECT Sender, Subject, Content, SentDate FROM Messages WHERE (MessageID = {})", msg));
  if (!row->Next()) throw DatabaseError("the message to be replied to is gone");
  const auto text = [&](std::string_view name) { return std::string(TextOf(row->Get(row->Column(name)))); };
  const auto sent = DateTimeOf(row->Get(row->Column("SentDate")));
  const std::string day = sent ? FormatShortDate(visit.Context.Regional, sent->Day) : "";

  MessageState reply;
  reply.Recipients = {text("Sender")};
  reply.Subject = std::string(LoadText(visit, Text::kReplySubjectPrefix)) + text("Subject");
  reply.Content = LoadText(visit, Text::kQuoteIntroduction, {day}) + "\r\n" + QuoteForReply(text("Content"));
  ShowMessageForm(visit, reply);
}

}  // namespace orlune
