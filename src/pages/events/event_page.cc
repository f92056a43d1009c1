#include "pages/events/event_page.h"

#include <algorithm>
#include <tuple>

#include "base/lists.h"
#include "base/text.h"
#include "html/page_frame.h"
#include "model/occurrence_dates.h"
#include "pages/events/event_check.h"
#include "pages/events/event_form.h"
#include "pages/events/event_search.h"
#include "pages/events/found_events.h"
#include "pages/events/suggestions.h"
#include "request/field_limits.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/event_days.h"
#include "store/event_store.h"
#include "store/recipients.h"
#include "store/transaction.h"

namespace orlune {
namespace {

void RedirectToCalendar(Visit& visit) {
  visit.Response.Redirect(visit.Context.Hosting.ScriptName);
}

void Refuse(Visit& visit) {
  WritePage(visit, ErrorPage(visit.Context, LoadText(visit.Context, Text::kNoRights)));
}

void ShowGone(Visit& visit) {
  WritePage(visit, ErrorPage(visit.Context, LoadText(visit.Context, Text::kEventIsGone)));
}

/// The event in the request, and the stored event that it refers to.
struct RequestedEvent {
  EventDraft Draft;
  std::optional<OL_Event> Stored;
};

/// The form field has precedence over the query parameter.
std::string_view EventId(const Visit& visit) {
  const Request& request = visit.Request;
  const std::string_view posted = request.FormField("id");
  return posted.empty() ? request.QueryParameter("id") : posted;
}

std::optional<OL_Event> FindStored(const Visit& visit, std::string_view id) {
  const auto number = RowNumber(id);
  return number ? Ask(visit.Database, FindEvent(*number)) : std::nullopt;
}

/// Appends an alert when the event does not exist any more.
RequestedEvent ReadEvent(Visit& visit) {
  RequestedEvent event;
  const std::string_view id = EventId(visit);
  if (!id.empty()) {
    event.Stored = FindStored(visit, id);
    if (!event.Stored) AddAlert(visit, Text::kEventIsGone);
  }
  if (visit.Request.FormFieldCount() > 0) {
    event.Draft = PostedDraft(visit.Context, visit.Request, event.Stored);
  } else if (event.Stored) {
    event.Draft = StoredDraft(visit.Context, *event.Stored);
  }
  FillDefaults(visit.Context, event.Draft);
  return event;
}

bool MaySee(const Visitor& visitor, const RequestedEvent& event) {
  return !event.Stored || !event.Stored->Private || visitor.MayChangeEventsOf(event.Stored->Owner);
}

bool MaySave(const Visitor& visitor, const RequestedEvent& event) {
  return (!event.Stored || visitor.MayChangeEventsOf(event.Stored->Owner)) &&
         visitor.MayChangeEventsOf(event.Draft.Event.Owner);
}

void CheckTyped(Visit& visit, const RequestedEvent& event) {
  const OL_Event& typed = event.Draft.Event;
  const OL_Event stored = event.Stored.value_or(OL_Event{});
  CheckLengths(visit, {{Text::kEventName, typed.EventName, 255, stored.EventName},
                       {Text::kEventType, typed.EventType, 50, stored.EventType},
                       {Text::kRepeatWeekdays, typed.RepeatWeekday, 1'000},
                       {Text::kRepeatDays, typed.RepeatDay, 1'000}});
  CheckTextLength(visit, Text::kEventComments, typed.Comments, stored.Comments);
}

bool HasSameRule(const OL_Event& one, const OL_Event& other) {
  const auto rule = [](const OL_Event& event) {
    return std::tie(event.Type, event.BeginDate, event.EndDate, event.RepeatWeekday, event.RepeatFrequency,
                    event.RepeatDay, event.RepeatWeekends);
  };
  return rule(one) == rule(other);
}

/// The stored days of the event, which only a shared calendar's has.
EventDays DaysOf(Visit& visit, const std::optional<OL_Event>& stored) {
  const bool mayHaveDays = visit.Context.Hosting.Sharing || (stored && stored->Type == Repetition::kListed);
  return stored && mayHaveDays ? Ask(visit.Database, EventDaysOf(stored->EventID)) : EventDays();
}

/// With a new rule an event loses the days that say nothing about it any more.
void StoreEvent(Visit& visit, const std::optional<OL_Event>& stored, const OL_Event& event) {
  const PageContext& context = visit.Context;
  const Visitor& visitor = context.Visitor;
  const EventDays days = DaysOf(visit, stored);
  const bool keepsAll = !stored || HasSameRule(*stored, event);
  const EventDays kept =
      keepsAll ? days : RemainingDays(event, Week(visitor.FirstDayOfWeek, visitor.Weekend), days);
  if (kept == days) return SaveEvent(visit.Database, context.Regional, event, visitor.ChangeableCalendars());
  Transaction both(visit.Database);
  SaveEvent(visit.Database, context.Regional, event, visitor.ChangeableCalendars());
  KeepEventDays(visit.Database, context.Regional, event.EventID, kept, days);
  both.Commit();
}

void Save(Visit& visit, const RequestedEvent& event) {
  if (!MaySave(visit.Context.Visitor, event)) return Refuse(visit);
  CheckTyped(visit, event);
  const auto checked = CheckEvent(visit, event.Draft);
  if (!checked) return ShowEventForm(visit, event.Draft);
  StoreEvent(visit, event.Stored, *checked);
  RedirectToCalendar(visit);
}

std::vector<std::string> PostedRecipients(const Visit& visit) {
  return ChosenRecipients(visit.Database, visit.Request.FormField("vastaanottaja"));
}

void Send(Visit& visit, RequestedEvent event) {
  if (!MaySave(visit.Context.Visitor, event)) return Refuse(visit);
  const std::vector<std::string> recipients = PostedRecipients(visit);
  event.Draft.Event.SuggestState = SuggestionState::kSent;
  CheckTyped(visit, event);
  if (!SendSuggestion(visit, event.Draft, recipients))
    return ShowSuggestionForm(visit, event.Draft, recipients);
  RedirectToCalendar(visit);
}

void Answer(Visit& visit, const RequestedEvent& event, SuggestionState answer) {
  if (!event.Stored) return ShowGone(visit);
  AnswerSuggestion(visit, event.Stored->EventID, answer);
}

bool MayDelete(const Visit& visit, std::string_view ids) {
  const auto owners = Ask(visit.Database, OwnersOfEvents(ids));
  return std::all_of(owners.begin(), owners.end(), [&](const std::string& owner) {
    return visit.Context.Visitor.MayChangeEventsOf(owner);
  });
}

/// Deletes one event or, from the results of a search, several.
void Delete(Visit& visit) {
  const std::string_view id = EventId(visit);
  if (!id.empty()) {
    const auto ids = RowNumbers(id);
    const bool isFollowedLink = visit.Request.FormFieldCount() == 0;
    if (!ids || (isFollowedLink && !FindStored(visit, id))) return ShowGone(visit);
    if (!MayDelete(visit, *ids)) return Refuse(visit);
    DeleteEvents(visit.Database, *ids, visit.Context.Visitor.ChangeableCalendars());
  }
  if (visit.Request.QueryParameter("ret") == "results") return ShowFoundEvents(visit);
  RedirectToCalendar(visit);
}

void ShowErrors(Visit& visit) {
  WritePage(visit, ErrorPage(visit.Context, ReplaceAll(visit.Alerts, "\\n", "<BR>")));
}

/// The actions on the one event in the request.
void ShowOneEvent(Visit& visit, std::string_view action) {
  RequestedEvent event = ReadEvent(visit);
  if (!visit.Alerts.empty()) return ShowErrors(visit);
  const auto answer = SuggestionStateOf(action);
  if (answer == SuggestionState::kAccepted || answer == SuggestionState::kDeclined)
    return Answer(visit, event, *answer);
  if (action == "save") return Save(visit, event);
  if (action == "send") return Send(visit, std::move(event));
  if (!MaySee(visit.Context.Visitor, event)) return Refuse(visit);
  if (action == "sendform") return ShowSuggestionForm(visit, event.Draft, PostedRecipients(visit));
  ShowEventForm(visit, event.Draft);
}

}  // namespace

void ShowEventPage(Visit& visit) {
  if (!visit.Alerts.empty()) return ShowErrors(visit);
  const std::string_view action = visit.Request.QueryParameter("act");
  if (action == "find") return ShowSearchForm(visit);
  if (action == "results") return ShowFoundEvents(visit);
  if (action == "delete") return Delete(visit);
  if (action == "notify") return NotifySender(visit);
  ShowOneEvent(visit, action);
}

}  // namespace orlune
