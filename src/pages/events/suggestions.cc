#include "pages/events/suggestions.h"

#include <algorithm>

#include "base/date_text.h"
#include "base/dates.h"
#include "base/lists.h"
#include "base/text.h"
#include "html/form_parts.h"
#include "html/page_frame.h"
#include "pages/events/event_check.h"
#include "pages/events/form_page.h"
#include "pages/messages/message_sending.h"
#include "pages/messages/recipients.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/database_access.h"
#include "store/event_store.h"
#include "store/field.h"
#include "store/transaction.h"

namespace orlune {
namespace {

std::string DateText(const Visit& visit, const OL_Event& event) {
  const RegionalSettings& regional = visit.Context.Regional;
  std::string text = FormatShortDate(regional, event.BeginDate);
  if (event.Type != "none") text += "-" + FormatShortDate(regional, event.EndDate);
  return text;
}

std::string TimeText(const Visit& visit, const OL_Event& event) {
  if (!event.BeginTime) return "&nbsp;";
  std::string text = FormatTime(visit.Context.Visitor.TimeFormat, *event.BeginTime);
  if (event.EndTime) text += "-" + FormatTime(visit.Context.Visitor.TimeFormat, *event.EndTime);
  return text;
}

std::string SuggestionText(const Visit& visit, const OL_Event& event) {
  std::string text("<P>");
  const auto add = [&](std::string_view piece) { text += piece; };
  const auto addLine = [&](Text label, std::string_view value, std::string_view lineEnd) {
    text.append(LoadText(visit, label)).append(" <B>").append(value).append("</B>").append(lineEnd);
  };
  add(LoadText(visit, Text::kSuggestionIntroduction));
  add("<P>");
  addLine(Text::kEventName, event.EventName, "<BR>");
  addLine(Text::kEventType, event.EventType, "<BR><BR>");
  addLine(Text::kEventDate, DateText(visit, event), "<BR>");
  addLine(Text::kEventTime, TimeText(visit, event), "<BR><BR>");
  add(LoadText(visit, Text::kEventComments));
  add(" ");
  add(event.Comments);
  return text;
}

/// Stores the sender's copy and returns its number.
int SaveSendersCopy(const Visit& visit, const OL_Event& event) {
  SaveEvent(visit.Database, visit.Context.Regional, event);
  if (event.EventID != 0) return event.EventID;
  const auto newest = FindNewestSenderCopy(visit.Database);
  if (!newest) throw DatabaseError("a suggestion was stored and cannot be found");
  return *newest;
}

void SaveRecipientsCopies(const Visit& visit, OL_Event event, int sendersCopy,
                          const std::vector<std::string>& recipients) {
  event.SuggID = std::to_string(sendersCopy);
  event.EventID = 0;
  event.SuggestState = "undecided";
  for (const std::string& recipient : recipients) {
    event.Owner = recipient;
    SaveEvent(visit.Database, visit.Context.Regional, event);
  }
}

struct SuggestedEvent {
  std::string EventName;
  std::string Owner;
};

std::optional<SuggestedEvent> FindSuggestedEvent(const Visit& visit, std::string_view id) {
  const auto number = EventNumber(id);
  if (!number) return std::nullopt;
  const auto row = OpenQuery(visit.Database,
                             Statement("SELECT EventName, Owner FROM Events WHERE (EventID = {})", *number));
  if (!row->Next()) return std::nullopt;
  return SuggestedEvent{std::string(TextOf(row->Get(row->Column("EventName")))),
                        std::string(TextOf(row->Get(row->Column("Owner"))))};
}

/// Whether the event was suggested to the user, or is the user's own.
bool IsConcerned(const Visit& visit, int eventId, std::string_view owner) {
  if (visit.Context.Visitor.MayChangeEventsOf(owner)) return true;
  const auto copy = OpenQuery(visit.Database,
                              Statement("SELECT EventID FROM Events WHERE (SuggID = '{}') AND (Owner = '{}')",
                                        eventId, visit.Context.Visitor.LoginName));
  return copy->Next();
}

std::string_view AnswerWord(const Visit& visit, std::string_view answer) {
  return LoadText(visit, answer == "accepted" ? Text::kAccepted : Text::kDeclined);
}

void ShowReplyForm(Visit& visit, int eventId, std::string_view answer) {
  const std::string_view sendLabel = LoadText(visit, Text::kSendMessage);
  Html page = FormPageOpen(visit, Html("p=e&act=notify&id={}", eventId), Text::kNotificationTitle,
                           EventToolbar(visit));
  page.Add(
      "<TR><TD><LABEL FOR=\"addinfo\">{}</LABEL><P>"
      "<TEXTAREA NAME=\"addinfo\" ID=\"addinfo\" COLS=50 ROWS=10></TEXTAREA>{}</TD></TR>\r\n",
      Content(LoadText(visit, Text::kNotificationIntroduction, {AnswerWord(visit, answer), sendLabel})),
      HiddenField("suggstate", answer));
  FinishFormRows(visit, std::move(page),
                 Html("<INPUT TYPE=submit NAME=\"notify\" VALUE=\"{}\">", Attribute(sendLabel)));
}

}  // namespace

bool SendSuggestion(Visit& visit, const EventDraft& draft, const std::vector<std::string>& recipients) {
  if (recipients.empty()) {
    AddAlert(visit, Text::kNoRecipientsSelected);
    return false;
  }
  auto event = CheckEvent(visit, draft);
  if (!event) return false;
  event->SuggID.clear();

  Transaction everything(visit.Database);
  const int sendersCopy = SaveSendersCopy(visit, *event);
  std::vector<std::string> receivers = recipients;
  ExpandGroupRecipients(visit.Database, receivers);
  std::erase(receivers, visit.Context.Visitor.LoginName);
  if (!receivers.empty()) {
    SaveRecipientsCopies(visit, *event, sendersCopy, receivers);
    SendMessage(visit, JoinList(receivers), event->EventName, SuggestionText(visit, *event),
                std::to_string(sendersCopy));
  }
  everything.Commit();
  return true;
}

void AnswerSuggestion(Visit& visit, int eventId, std::string_view answer) {
  if (!visit.Context.Visitor.IsLoggedIn())
    return WritePage(visit, ErrorPage(visit, LoadText(visit, Text::kNoRights)));
  SetSuggestState(visit.Database, std::to_string(eventId), visit.Context.Visitor.LoginName, answer);
  ShowReplyForm(visit, eventId, answer);
}

void NotifySender(Visit& visit) {
  if (!visit.Context.Visitor.IsLoggedIn())
    return WritePage(visit, ErrorPage(visit, LoadText(visit, Text::kNoRights)));
  const Request& request = visit.Request;
  const std::string_view id = request.QueryParameter("id");
  const auto event = FindSuggestedEvent(visit, id);
  if (!event) return WritePage(visit, ErrorPage(visit, LoadText(visit, Text::kEventIsGone)));
  if (!IsConcerned(visit, EventNumber(id).value_or(0), event->Owner))
    return WritePage(visit, ErrorPage(visit, LoadText(visit, Text::kNoRights)));

  const std::string_view note = request.FormField("addinfo");
  const std::string subject = LoadText(visit, Text::kNotificationSubject,
                                       {AnswerWord(visit, request.FormField("suggstate")), event->EventName});
  Transaction copies(visit.Database);
  if (!SendMessage(visit, event->Owner, subject,
                   note.empty() ? LoadText(visit, Text::kNoFurtherInformation) : note))
    return;
  copies.Commit();
  visit.Response.Redirect(visit.Context.Hosting.ScriptName + "?p=m");
}

}  // namespace orlune
