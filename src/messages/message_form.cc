#include "messages/message_form.h"

#include <unordered_set>

#include "component/component_state.h"
#include "data/calendar_options.h"
#include "data/database_access.h"
#include "data/field.h"
#include "frame/dates.h"
#include "frame/form_parts.h"
#include "frame/page_frame.h"
#include "frame/texts.h"
#include "messages/message_parts.h"
#include "messages/quoting.h"

namespace orlune {
namespace {

Html SubjectRow(const ComponentState& state, const MessageState& message) {
  return Html(
      "<TR><TD>{}</TD><TD ALIGN=RIGHT>{}: <INPUT TYPE=text NAME=\"Otsikko\" VALUE=\"{}\" size={}></TD></TR>",
      Content(LoadText(state, 571)), Content(LoadText(state, 503)), Attribute(message.Subject),
      InputSize(state, 18, 38));
}

Html RecipientList(const ComponentState& state, const MessageState& message) {
  const std::unordered_set<std::string> chosen(message.Recipients.begin(), message.Recipients.end());
  const auto rows = OpenQuery(*state.Database, Statement("SELECT FriendlyName, Name, IsGroup FROM Calendars "
                                                         "ORDER BY IsGroup, FriendlyName"));
  Html list("<SELECT MULTIPLE SIZE=14 NAME=\"Vastaanottaja\">");
  AddCalendarOptions(
      list, *rows, [&](std::string_view name) { return chosen.contains(std::string(name)); }, "\r\n");
  return list.Add("</SELECT>");
}

Html TextRow(const ComponentState& state, const MessageState& message) {
  return Html(
      "<TR><TD>{}</TD>\r\n<TD ALIGN=RIGHT>"
      "<TEXTAREA COLS=40 ROWS=12 WRAP=soft NAME=\"Sisalto\">{}</TEXTAREA></TD></TR>",
      RecipientList(state, message), TextAreaContent(message.Content));
}

Html SendRow(const ComponentState& state) {
  return Html("<TR><TD COLSPAN=2 ALIGN=CENTER CLASS=\"captions\"><INPUT TYPE=submit VALUE=\"{}\">",
              Attribute(LoadText(state, 590)));
}

}  // namespace

void ShowMessageForm(ComponentState& state, const MessageState& message) {
  Html page = PageHead(state, state.ProductTitle);
  page.Add(MessageToolbar(state));
  page.Add(TitleBarOpen("", Html("{}", Content(LoadText(state, 570))), {}));
  page.Add("<FORM method=POST action=\"{}?p=m&act=send\" NAME=\"acForm\">", Attribute(state.ScriptName));
  page.Add(
      "<TABLE CELLSPACING={} ALIGN=CENTER WIDTH=100%><TR><TD>"
      "<TABLE WIDTH=100% CELLPADDING=5>",
      CellSpacing(state));
  page.Add(SubjectRow(state, message));
  page.Add(TextRow(state, message));
  page.Add(SendRow(state));
  page.Add(TableClose());
  page.Add(TableClose());
  FinishFormPage(state, std::move(page));
}

void ShowReplyForm(ComponentState& state, std::string_view msg) {
  const auto row = OpenQuery(
      *state.Database,
      Statement("SELECT Sender, Subject, Content, SentDate FROM Messages WHERE (MessageID = {})", msg));
  if (!row->Next()) throw DatabaseError("the message to be replied to is gone");
  const auto text = [&](std::string_view name) { return std::string(TextOf(row->Get(row->Column(name)))); };
  const auto sent = DateTimeOf(row->Get(row->Column("SentDate")));
  const std::string day = sent ? FormatShortDate(state.Surroundings->Regional, sent->Day) : "";

  MessageState reply;
  reply.Recipients = {text("Sender")};
  reply.Subject = std::string(LoadText(state, 506)) + text("Subject");
  reply.Content = LoadText(state, 507, {day}) + "\r\n" + QuoteForReply(text("Content"));
  ShowMessageForm(state, reply);
}

}  // namespace orlune
