#include "pages/events/event_page.h"

#include "base/text.h"
#include "html/page_frame.h"
#include "pages/events/event_check.h"
#include "pages/events/event_form.h"
#include "pages/events/event_search.h"
#include "pages/events/found_events.h"
#include "pages/events/suggestions.h"
#include "pages/messages/recipients.h"
#include "request/component_state.h"
#include "request/rights.h"
#include "request/texts.h"
#include "store/database_access.h"
#include "store/event_store.h"
#include "store/field.h"

namespace orlune {
namespace {

void RedirectToCalendar(ComponentState& state) {
  state.Context.Response->Redirect(state.ScriptName);
}

void Refuse(ComponentState& state) {
  WritePage(state, ErrorPage(state, LoadText(state, 850)));
}

void ShowGone(ComponentState& state) {
  WritePage(state, ErrorPage(state, LoadText(state, 821)));
}

/// The event that the request describes, and the stored one that it names.
struct RequestedEvent {
  EventDraft Draft;
  std::optional<OL_Event> Stored;
};

/// The posted number of the event, or that of the query.
std::string_view EventId(const ComponentState& state) {
  const Request& request = *state.Context.Request;
  const std::string_view posted = request.FormField("id");
  return posted.empty() ? request.QueryParameter("id") : posted;
}

/// Appends an error when the request names an event that is gone.
RequestedEvent ReadEvent(ComponentState& state) {
  RequestedEvent event;
  const std::string_view id = EventId(state);
  if (!id.empty()) {
    event.Stored = FindEvent(state, id);
    if (!event.Stored) AddAlert(state, 821);
  }
  if (state.Context.Request->FormFieldCount() > 0) {
    event.Draft = PostedDraft(state, event.Stored);
  } else if (event.Stored) {
    event.Draft = StoredDraft(state, *event.Stored);
  }
  FillDefaults(state, event.Draft);
  return event;
}

bool MaySee(const ComponentState& state, const RequestedEvent& event) {
  return !event.Stored || !event.Stored->Private || MayChangeEventsOf(state, event.Stored->Owner);
}

bool MaySave(const ComponentState& state, const RequestedEvent& event) {
  return (!event.Stored || MayChangeEventsOf(state, event.Stored->Owner)) &&
         MayChangeEventsOf(state, event.Draft.Event.Owner);
}

void Save(ComponentState& state, const RequestedEvent& event) {
  if (!MaySave(state, event)) return Refuse(state);
  const auto checked = CheckEvent(state, event.Draft);
  if (!checked) return ShowEventForm(state, event.Draft);
  SaveEvent(*state.Database, state.Surroundings->Regional, *checked);
  RedirectToCalendar(state);
}

std::vector<std::string> PostedRecipients(const ComponentState& state) {
  return ChosenRecipients(*state.Database, state.Context.Request->FormField("vastaanottaja"));
}

void Send(ComponentState& state, RequestedEvent event) {
  if (!MaySave(state, event)) return Refuse(state);
  const std::vector<std::string> recipients = PostedRecipients(state);
  event.Draft.Event.SuggestState = "-";
  if (!SendSuggestion(state, event.Draft, recipients))
    return ShowSuggestionForm(state, event.Draft, recipients);
  RedirectToCalendar(state);
}

void Answer(ComponentState& state, const RequestedEvent& event, std::string_view answer) {
  if (!event.Stored) return ShowGone(state);
  AnswerSuggestion(state, event.Stored->EventID, answer);
}

bool MayDelete(const ComponentState& state, std::string_view ids) {
  const auto rows =
      OpenQuery(*state.Database, Statement("SELECT Owner FROM Events WHERE (EventID IN ({}))", ids));
  const int owner = rows->Column("Owner");
  while (rows->Next()) {
    if (!MayChangeEventsOf(state, TextOf(rows->Get(owner)))) return false;
  }
  return true;
}

/// Deletes one event or, from the hits of a search, several.
void Delete(ComponentState& state) {
  const std::string_view id = EventId(state);
  if (!id.empty()) {
    const auto ids = EventNumbers(id);
    const bool isFollowedLink = state.Context.Request->FormFieldCount() == 0;
    if (!ids || (isFollowedLink && !FindEvent(state, id))) return ShowGone(state);
    if (!MayDelete(state, *ids)) return Refuse(state);
    DeleteEvents(*state.Database, *ids);
  }
  if (state.Context.Request->QueryParameter("ret") == "results") return ShowFoundEvents(state);
  RedirectToCalendar(state);
}

void ShowErrors(ComponentState& state) {
  WritePage(state, ErrorPage(state, ReplaceAll(state.AlertText, "\\n", "<BR>")));
}

/// The actions that are about the one event that the request names or describes.
void ShowOneEvent(ComponentState& state, std::string_view action) {
  RequestedEvent event = ReadEvent(state);
  if (!state.AlertText.empty()) return ShowErrors(state);
  if (action == "accepted" || action == "declined") return Answer(state, event, action);
  if (action == "save") return Save(state, event);
  if (action == "send") return Send(state, std::move(event));
  if (!MaySee(state, event)) return Refuse(state);
  if (action == "sendform") return ShowSuggestionForm(state, event.Draft, PostedRecipients(state));
  ShowEventForm(state, event.Draft);
}

}  // namespace

void ShowEventPage(ComponentState& state) {
  if (!state.AlertText.empty()) return ShowErrors(state);
  const std::string_view action = state.Context.Request->QueryParameter("act");
  if (action == "find") return ShowSearchForm(state);
  if (action == "results") return ShowFoundEvents(state);
  if (action == "delete") return Delete(state);
  if (action == "notify") return NotifySender(state);
  ShowOneEvent(state, action);
}

}  // namespace orlune
