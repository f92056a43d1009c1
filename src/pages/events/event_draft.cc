#include "pages/events/event_draft.h"

#include <algorithm>

#include "base/date_text.h"
#include "base/dates.h"
#include "base/lists.h"
#include "base/text.h"
#include "pages/events/repetition_kinds.h"
#include "request/visit.h"
#include "store/database_access.h"
#include "store/event_reader.h"

namespace orlune {
namespace {

/// The kind that the form chose; "none" for what is no kind.
std::string ChosenKind(std::string_view posted) {
  const auto kind = std::find_if(kRepetitionKinds.begin(), kRepetitionKinds.end(),
                                 [&](const RepetitionKind& known) { return known.Name.Text() == posted; });
  return std::string((kind == kRepetitionKinds.end() ? kRepetitionKinds.front() : *kind).Name.Text());
}

}  // namespace

std::optional<int> EventNumber(std::string_view text) {
  const auto number = WholeNumber(text);
  return number && *number > 0 ? number : std::nullopt;
}

std::optional<std::string> EventNumbers(std::string_view text) {
  std::string numbers;
  bool isList = true;
  ForEachItem(text, [&](std::string_view item) {
    const auto number = EventNumber(item);
    isList = isList && number;
    if (!numbers.empty()) numbers += ", ";
    numbers += std::to_string(number.value_or(0));
  });
  return isList ? std::optional(std::move(numbers)) : std::nullopt;
}

std::optional<OL_Event> FindEvent(const Visit& visit, std::string_view id) {
  const auto number = EventNumber(id);
  if (!number) return std::nullopt;
  const auto rows =
      OpenQuery(visit.Database, Statement("SELECT * FROM Events WHERE (EventID = {})", *number));
  return rows->Next() ? std::optional(EventReader(*rows).Read(*rows)) : std::nullopt;
}

EventDraft PostedDraft(const Visit& visit, const std::optional<OL_Event>& stored) {
  const auto field = [&](std::string_view name) { return std::string(visit.Request.FormField(name)); };
  EventDraft draft;
  draft.IsTyped = true;
  OL_Event& event = draft.Event;
  if (stored) {
    event.EventID = stored->EventID;
    event.SuggID = stored->SuggID;
  }
  event.EventName = field("title");
  event.Comments = field("addinfo");
  event.Type = ChosenKind(field("reptype"));
  event.Owner = field("calendar");
  event.Private = field("private") == "on";
  event.RepeatWeekday = field("repweekday");
  event.RepeatFrequency = field("frequency");
  event.RepeatDay = field("repday");
  event.RepeatWeekends = field("repweekends");
  event.SuggestState = field("suggstate");
  event.EventType = ReplaceAll(field("type"), "'", "&#39;");
  draft.BeginDate = field("date1");
  draft.EndDate = field("date2");
  draft.BeginTime = field("time1");
  draft.EndTime = field("time2");
  return draft;
}

EventDraft StoredDraft(const Visit& visit, const OL_Event& stored) {
  const RegionalSettings& regional = visit.Context.Regional;
  const auto timeText = [&](std::optional<TimeOfDay> time) {
    return time ? FormatTime(visit.Context.Visitor.TimeFormat, *time) : "";
  };
  EventDraft draft{.Event = stored,
                   .IsTyped = false,
                   .BeginDate = FormatShortDate(regional, stored.BeginDate),
                   .EndDate = stored.Type == "none" ? "" : FormatShortDate(regional, stored.EndDate),
                   .BeginTime = timeText(stored.BeginTime),
                   .EndTime = timeText(stored.EndTime)};
  draft.Event.Type = ChosenKind(stored.Type);
  return draft;
}

void FillDefaults(const Visit& visit, EventDraft& draft) {
  const auto fill = [](std::string& field, std::string_view value) {
    if (field.empty()) field = value;
  };
  const std::string today = FormatShortDate(visit.Context.Regional, visit.Context.Visitor.CurrentDate);
  fill(draft.BeginDate, today);
  fill(draft.EndDate, today);
  fill(draft.Event.Type, kRepetitionKinds.front().Name.Text());
  fill(draft.Event.RepeatWeekends, "vkl_ok");
  fill(draft.Event.Owner, visit.Context.Visitor.LoginName);
}

}  // namespace orlune
