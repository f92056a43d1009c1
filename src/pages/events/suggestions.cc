#include "pages/events/suggestions.h"

#include "base/date_text.h"
#include "base/dates.h"
#include "base/lists.h"
#include "base/text.h"
#include "html/form_parts.h"
#include "html/page_frame.h"
#include "pages/events/event_check.h"
#include "pages/events/form_page.h"
#include "request/field_limits.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/messages.h"
#include "store/suggestions.h"
#include "store/transaction.h"

namespace orlune {
namespace {

std::string DateText(const PageContext& context, const OL_Event& event) {
  const RegionalSettings& regional = context.Regional;
  std::string text = FormatShortDate(regional, event.BeginDate);
  if (event.Type != Repetition::kNone) text += "-" + FormatShortDate(regional, event.EndDate);
  return text;
}

std::string TimeText(const PageContext& context, const OL_Event& event) {
  if (!event.BeginTime) return "&nbsp;";
  std::string text = FormatTime(context.Visitor.TimeFormat, *event.BeginTime);
  if (event.EndTime) text += "-" + FormatTime(context.Visitor.TimeFormat, *event.EndTime);
  return text;
}

std::string SuggestionText(const PageContext& context, const OL_Event& event) {
  std::string text("<P>");
  const auto add = [&](std::string_view piece) { text += piece; };
  const auto addLine = [&](Text label, std::string_view value, std::string_view lineEnd) {
    text.append(LoadText(context, label)).append(" <B>").append(value).append("</B>").append(lineEnd);
  };
  add(LoadText(context, Text::kSuggestionIntroduction));
  add("<P>");
  addLine(Text::kEventName, event.EventName, "<BR>");
  addLine(Text::kEventType, event.EventType, "<BR><BR>");
  addLine(Text::kEventDate, DateText(context, event), "<BR>");
  addLine(Text::kEventTime, TimeText(context, event), "<BR><BR>");
  add(LoadText(context, Text::kEventComments));
  add(" ");
  add(event.Comments);
  return text;
}

bool IsConcerned(const Visit& visit, int eventId, std::string_view owner) {
  const Visitor& visitor = visit.Context.Visitor;
  return visitor.MayChangeEventsOf(owner) || Ask(visit.Database, HasReceivedCopy(eventId, visitor.LoginName));
}

std::string_view AnswerWord(const PageContext& context, SuggestionState answer) {
  return LoadText(context, answer == SuggestionState::kAccepted ? Text::kAccepted : Text::kDeclined);
}

Html WriteReplyForm(const PageContext& context, int eventId, SuggestionState answer, std::string_view note) {
  const std::string_view sendLabel = LoadText(context, Text::kSendMessage);
  Html page = FormPageOpen(context, Html("p=e&act=notify&id={}", eventId), Text::kNotificationTitle,
                           EventToolbar(context));
  page.Add(
      "<TR><TD><LABEL FOR=\"addinfo\">{}</LABEL><P>"
      "<TEXTAREA NAME=\"addinfo\" ID=\"addinfo\" COLS=50 ROWS=10>{}</TEXTAREA>{}</TD></TR>\r\n",
      Content(LoadText(context, Text::kNotificationIntroduction, {AnswerWord(context, answer), sendLabel})),
      TextAreaContent(note), HiddenField("suggstate", StoredText(answer)));
  return CloseFormRows(std::move(page),
                       Html("<INPUT TYPE=submit NAME=\"notify\" VALUE=\"{}\">", Attribute(sendLabel)));
}

}  // namespace

bool SendSuggestion(Visit& visit, const EventDraft& draft, const std::vector<std::string>& recipients) {
  if (recipients.empty()) {
    AddAlert(visit, Text::kNoRecipientsSelected);
    return false;
  }
  const auto event = CheckEvent(visit, draft);
  if (!event) return false;
  const std::string text = SuggestionText(visit.Context, *event);
  CheckSending(visit, recipients, 2 * event->EventName.size() + event->Comments.size() + text.size());
  if (!visit.Alerts.empty()) return false;

  Transaction everything(visit.Database);
  StoreSuggestion(visit.Database, visit.Context.Regional, *event,
                  {.Sender = visit.Context.Visitor.LoginName,
                   .Recipients = recipients,
                   .Subject = event->EventName,
                   .Content = text,
                   .SentDate = visit.Clock.Now()},
                  visit.Context.Visitor.ChangeableCalendars());
  everything.Commit();
  return true;
}

void AnswerSuggestion(Visit& visit, int eventId, SuggestionState answer) {
  if (!visit.Context.Visitor.IsLoggedIn())
    return WritePage(visit, ErrorPage(visit.Context, LoadText(visit.Context, Text::kNoRights)));
  StoreAnswer(visit.Database, eventId, visit.Context.Visitor.LoginName, answer);
  FinishFormPage(visit, WriteReplyForm(visit.Context, eventId, answer, ""));
}

void NotifySender(Visit& visit) {
  if (!visit.Context.Visitor.IsLoggedIn())
    return WritePage(visit, ErrorPage(visit.Context, LoadText(visit.Context, Text::kNoRights)));
  const PageContext& context = visit.Context;
  const Request& request = visit.Request;
  const auto id = RowNumber(request.QueryParameter("id"));
  const auto event = id ? Ask(visit.Database, FindSuggestedEvent(*id)) : std::nullopt;
  if (!event || event->Owner.empty())
    return WritePage(visit, ErrorPage(context, LoadText(context, Text::kEventIsGone)));
  if (!IsConcerned(visit, *id, event->Owner))
    return WritePage(visit, ErrorPage(context, LoadText(context, Text::kNoRights)));

  const std::string_view note = request.FormField("addinfo");
  const auto answer = SuggestionStateOf(request.FormField("suggstate")).value_or(SuggestionState::kDeclined);
  const std::vector<std::string> recipients{event->Owner};
  CheckTextLength(visit, Text::kEventComments, note);
  CheckSending(visit, recipients, event->EventName.size() + note.size());
  if (!visit.Alerts.empty())
    return FinishFormPage(visit, WriteReplyForm(context, *id, answer, WithReferencesShown(note)));

  Transaction copies(visit.Database);
  SendMessage(visit.Database, context.Regional,
              {.Sender = context.Visitor.LoginName,
               .Recipients = recipients,
               .Subject = LoadText(context, Text::kNotificationSubject,
                                   {AnswerWord(context, answer), event->EventName}),
               .Content = std::string(note.empty() ? LoadText(context, Text::kNoFurtherInformation) : note),
               .SentDate = visit.Clock.Now()});
  copies.Commit();
  visit.Response.Redirect(visit.Context.Hosting.ScriptName + "?p=m");
}

}  // namespace orlune
