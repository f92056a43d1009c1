#include "pages/messages/message_form.h"

#include <span>
#include <unordered_set>

#include "base/dates.h"
#include "html/calendar_options.h"
#include "html/form_parts.h"
#include "html/page_frame.h"
#include "pages/messages/message_parts.h"
#include "pages/messages/quoting.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/calendars.h"
#include "store/messages.h"

namespace orlune {
namespace {

Html SubjectRow(const PageContext& context, const MessageState& message) {
  return Html(
      "<TR><TD>{}</TD><TD ALIGN=RIGHT>{}: <INPUT TYPE=text NAME=\"Otsikko\" VALUE=\"{}\" size={}></TD></TR>",
      Content(LoadText(context, Text::kMessageRecipients)), Content(LoadText(context, Text::kMessageSubject)),
      Attribute(message.Subject), InputSize(context, 18, 38));
}

Html RecipientList(const MessageState& message, std::span<const Calendar> calendars) {
  const std::unordered_set<std::string> chosen(message.Recipients.begin(), message.Recipients.end());
  Html list("<SELECT MULTIPLE SIZE=14 NAME=\"Vastaanottaja\">");
  AddCalendarOptions(
      list, calendars, [&](std::string_view name) { return chosen.contains(std::string(name)); }, "\r\n");
  return list.Add("</SELECT>");
}

Html TextRow(const MessageState& message, std::span<const Calendar> calendars) {
  return Html(
      "<TR><TD>{}</TD>\r\n<TD ALIGN=RIGHT>"
      "<TEXTAREA COLS=40 ROWS=12 WRAP=soft NAME=\"Sisalto\">{}</TEXTAREA></TD></TR>",
      RecipientList(message, calendars), TextAreaContent(message.Content));
}

Html SendRow(const PageContext& context) {
  return Html("<TR><TD COLSPAN=2 ALIGN=CENTER CLASS=\"captions\"><INPUT TYPE=submit VALUE=\"{}\">",
              Attribute(LoadText(context, Text::kSendMessage)));
}

Html WriteMessageForm(const PageContext& context, const MessageState& message,
                      std::span<const Calendar> calendars) {
  Html page = PageHead(context, context.Hosting.ProductTitle);
  page.Add(MessageToolbar(context));
  page.Add(TitleBarOpen("", Html("{}", Content(LoadText(context, Text::kNewMessageTitle))), {}));
  page.Add("<FORM method=POST action=\"{}?p=m&act=send\" NAME=\"acForm\">",
           Attribute(context.Hosting.ScriptName));
  page.Add(
      "<TABLE CELLSPACING={} ALIGN=CENTER WIDTH=100%><TR><TD>"
      "<TABLE WIDTH=100% CELLPADDING=5>",
      CellSpacing(context));
  page.Add(SubjectRow(context, message));
  page.Add(TextRow(message, calendars));
  page.Add(SendRow(context));
  page.Add(TableClose());
  page.Add(TableClose());
  return page;
}

MessageState ReplyTo(const PageContext& context, const ReceivedMessage& received) {
  const auto& sent = received.SentDate;
  const std::string day = sent ? FormatShortDate(context.Regional, sent->Day) : "";
  return {.Recipients = {received.Sender},
          .Subject = std::string(LoadText(context, Text::kReplySubjectPrefix)) + received.Subject,
          .Content =
              LoadText(context, Text::kQuoteIntroduction, {day}) + "\r\n" + QuoteForReply(received.Content)};
}

}  // namespace

void ShowMessageForm(Visit& visit, const MessageState& message) {
  const std::vector<Calendar> calendars = Ask(visit.Database, AllCalendars());
  FinishFormPage(visit, WriteMessageForm(visit.Context, message, calendars));
}

void ShowReplyForm(Visit& visit, const NamedMessages& named) {
  const auto received = Ask(visit.Database, FindMessageToReplyTo(named));
  if (!received) return RefuseMissingMessage(visit);
  ShowMessageForm(visit, ReplyTo(visit.Context, *received));
}

}  // namespace orlune
