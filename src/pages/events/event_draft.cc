#include "pages/events/event_draft.h"

#include "base/date_text.h"
#include "base/dates.h"
#include "base/text.h"
#include "platform/page_host.h"
#include "request/page_context.h"

namespace orlune {

EventDraft PostedDraft(const PageContext& context, const Request& request,
                       const std::optional<OL_Event>& stored) {
  const auto field = [&](std::string_view name) { return std::string(request.FormField(name)); };
  EventDraft draft;
  draft.IsTyped = true;
  OL_Event& event = draft.Event;
  if (stored) {
    event.EventID = stored->EventID;
    event.SuggID = stored->SuggID;
    draft.HasListedDays = stored->Type == Repetition::kListed;
  }
  event.EventName = field("title");
  event.Comments = field("addinfo");
  event.Type = RepetitionOf(request.FormField("reptype")).value_or(Repetition::kNone);
  if (event.Type == Repetition::kListed && !draft.HasListedDays) event.Type = Repetition::kNone;
  event.Owner = field("calendar");
  event.Private = field("private") == "on";
  event.RepeatWeekday = field("repweekday");
  event.RepeatFrequency = FrequencyOf(request.FormField("frequency"));
  event.RepeatDay = field("repday");
  event.RepeatWeekends = WeekendRuleOf(request.FormField("repweekends")).value_or(WeekendRule::kKeep);
  event.SuggestState =
      SuggestionStateOf(request.FormField("suggstate")).value_or(SuggestionState::kUndecided);
  event.EventType = ReplaceAll(field("type"), "'", "&#39;");
  const bool keepsDates = event.Type == Repetition::kListed;
  draft.BeginDate = keepsDates ? FormatShortDate(context.Regional, stored->BeginDate) : field("date1");
  draft.EndDate = keepsDates ? FormatShortDate(context.Regional, stored->EndDate) : field("date2");
  draft.BeginTime = field("time1");
  draft.EndTime = field("time2");
  return draft;
}

EventDraft StoredDraft(const PageContext& context, const OL_Event& stored) {
  const RegionalSettings& regional = context.Regional;
  const auto timeText = [&](std::optional<TimeOfDay> time) {
    return time ? FormatTime(context.Visitor.TimeFormat, *time) : "";
  };
  EventDraft draft{
      .Event = stored,
      .IsTyped = false,
      .HasListedDays = stored.Type == Repetition::kListed,
      .BeginDate = FormatShortDate(regional, stored.BeginDate),
      .EndDate = stored.Type == Repetition::kNone ? "" : FormatShortDate(regional, stored.EndDate),
      .BeginTime = timeText(stored.BeginTime),
      .EndTime = timeText(stored.EndTime)};
  if (stored.Type == Repetition::kUnknown) draft.Event.Type = Repetition::kNone;
  return draft;
}

void FillDefaults(const PageContext& context, EventDraft& draft) {
  const auto fill = [](std::string& field, std::string_view value) {
    if (field.empty()) field = value;
  };
  const std::string today = FormatShortDate(context.Regional, context.Visitor.CurrentDate);
  fill(draft.BeginDate, today);
  fill(draft.EndDate, today);
  fill(draft.Event.Owner, context.Visitor.LoginName);
}

}  // namespace orlune
