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
#include "request/component_state.h"
#include "request/rights.h"
#include "request/texts.h"
#include "store/database_access.h"
#include "store/event_store.h"
#include "store/field.h"
#include "store/transaction.h"

namespace orlune {
namespace {

std::string DateText(const ComponentState& state, const OL_Event& event) {
  const RegionalSettings& regional = state.Surroundings->Regional;
  std::string text = FormatShortDate(regional, event.BeginDate);
  if (event.Type != "none") text += "-" + FormatShortDate(regional, event.EndDate);
  return text;
}

std::string TimeText(const ComponentState& state, const OL_Event& event) {
  if (!event.BeginTime) return "&nbsp;";
  std::string text = FormatTime(state.TimeFormat, *event.BeginTime);
  if (event.EndTime) text += "-" + FormatTime(state.TimeFormat, *event.EndTime);
  return text;
}

std::string SuggestionText(const ComponentState& state, const OL_Event& event) {
  std::string text("<P>");
  const auto add = [&](std::string_view piece) { text += piece; };
  const auto addLine = [&](int label, std::string_view value, std::string_view lineEnd) {
    text.append(LoadText(state, label)).append(" <B>").append(value).append("</B>").append(lineEnd);
  };
  add(LoadText(state, 360));
  add("<P>");
  addLine(301, event.EventName, "<BR>");
  addLine(336, event.EventType, "<BR><BR>");
  addLine(309, DateText(state, event), "<BR>");
  addLine(310, TimeText(state, event), "<BR><BR>");
  add(LoadText(state, 312));
  add(" ");
  add(event.Comments);
  return text;
}

/// Stores the sender's copy and returns its number.
int SaveSendersCopy(const ComponentState& state, const OL_Event& event) {
  SaveEvent(*state.Database, state.Surroundings->Regional, event);
  if (event.EventID != 0) return event.EventID;
  const auto newest = FindNewestSenderCopy(*state.Database);
  if (!newest) throw DatabaseError("a suggestion was stored and cannot be found");
  return *newest;
}

void SaveRecipientsCopies(const ComponentState& state, OL_Event event, int sendersCopy,
                          const std::vector<std::string>& recipients) {
  event.SuggID = std::to_string(sendersCopy);
  event.EventID = 0;
  event.SuggestState = "undecided";
  for (const std::string& recipient : recipients) {
    event.Owner = recipient;
    SaveEvent(*state.Database, state.Surroundings->Regional, event);
  }
}

struct SuggestedEvent {
  std::string EventName;
  std::string Owner;
};

std::optional<SuggestedEvent> FindSuggestedEvent(const ComponentState& state, std::string_view id) {
  const auto number = EventNumber(id);
  if (!number) return std::nullopt;
  const auto row = OpenQuery(*state.Database,
                             Statement("SELECT EventName, Owner FROM Events WHERE (EventID = {})", *number));
  if (!row->Next()) return std::nullopt;
  return SuggestedEvent{std::string(TextOf(row->Get(row->Column("EventName")))),
                        std::string(TextOf(row->Get(row->Column("Owner"))))};
}

/// Whether the event was suggested to the user, or is the user's own.
bool IsConcerned(const ComponentState& state, int eventId, std::string_view owner) {
  if (MayChangeEventsOf(state, owner)) return true;
  const auto copy = OpenQuery(*state.Database,
                              Statement("SELECT EventID FROM Events WHERE (SuggID = '{}') AND (Owner = '{}')",
                                        eventId, state.LoginName));
  return copy->Next();
}

std::string_view AnswerWord(const ComponentState& state, std::string_view answer) {
  return LoadText(state, answer == "accepted" ? 333 : 334);
}

void ShowReplyForm(ComponentState& state, int eventId, std::string_view answer) {
  const std::string_view sendLabel = LoadText(state, 590);
  Html page = FormPageOpen(state, Html("p=e&act=notify&id={}", eventId), 370, EventToolbar(state));
  page.Add(
      "<TR><TD><LABEL FOR=\"addinfo\">{}</LABEL><P>"
      "<TEXTAREA NAME=\"addinfo\" ID=\"addinfo\" COLS=50 ROWS=10></TEXTAREA>{}</TD></TR>\r\n",
      Content(LoadText(state, 371, {AnswerWord(state, answer), sendLabel})),
      HiddenField("suggstate", answer));
  FinishFormRows(state, std::move(page),
                 Html("<INPUT TYPE=submit NAME=\"notify\" VALUE=\"{}\">", Attribute(sendLabel)));
}

}  // namespace

bool SendSuggestion(ComponentState& state, const EventDraft& draft,
                    const std::vector<std::string>& recipients) {
  if (recipients.empty()) {
    AddAlert(state, 820);
    return false;
  }
  auto event = CheckEvent(state, draft);
  if (!event) return false;
  event->SuggID.clear();

  Transaction everything(*state.Database);
  const int sendersCopy = SaveSendersCopy(state, *event);
  std::vector<std::string> receivers = recipients;
  ExpandGroupRecipients(*state.Database, receivers);
  std::erase(receivers, state.LoginName);
  if (!receivers.empty()) {
    SaveRecipientsCopies(state, *event, sendersCopy, receivers);
    SendMessage(state, state.LoginName, JoinList(receivers), event->EventName, SuggestionText(state, *event),
                std::to_string(sendersCopy));
  }
  everything.Commit();
  return true;
}

void AnswerSuggestion(ComponentState& state, int eventId, std::string_view answer) {
  if (!IsLoggedIn(state)) return WritePage(state, ErrorPage(state, LoadText(state, 850)));
  SetSuggestState(*state.Database, std::to_string(eventId), state.LoginName, answer);
  ShowReplyForm(state, eventId, answer);
}

void NotifySender(ComponentState& state) {
  if (!IsLoggedIn(state)) return WritePage(state, ErrorPage(state, LoadText(state, 850)));
  const Request& request = *state.Context.Request;
  const std::string_view id = request.QueryParameter("id");
  const auto event = FindSuggestedEvent(state, id);
  if (!event) return WritePage(state, ErrorPage(state, LoadText(state, 821)));
  if (!IsConcerned(state, EventNumber(id).value_or(0), event->Owner))
    return WritePage(state, ErrorPage(state, LoadText(state, 850)));

  const std::string_view note = request.FormField("addinfo");
  const std::string subject =
      LoadText(state, 372, {AnswerWord(state, request.FormField("suggstate")), event->EventName});
  Transaction copies(*state.Database);
  if (!SendMessage(state, state.LoginName, event->Owner, subject, note.empty() ? LoadText(state, 373) : note))
    return;
  copies.Commit();
  state.Context.Response->Redirect(state.ScriptName + "?p=m");
}

}  // namespace orlune
