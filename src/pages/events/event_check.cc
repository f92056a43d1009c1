#include "pages/events/event_check.h"

#include "base/dates.h"
#include "request/component_state.h"
#include "request/texts.h"

namespace orlune {
namespace {

void ReadDates(ComponentState& state, const EventDraft& draft, OL_Event& event) {
  const RegionalSettings& regional = state.Surroundings->Regional;
  const auto begin = ParseDate(regional, draft.BeginDate);
  if (!begin) return AddAlert(state, 812);
  event.BeginDate = *begin;
  if (event.Type == "none") return;

  const auto end = ParseDate(regional, draft.EndDate);
  if (!end) return AddAlert(state, 813);
  event.EndDate = *end;
  if (*end <= *begin) AddAlert(state, 814);
}

void ReadTimes(ComponentState& state, const EventDraft& draft, OL_Event& event) {
  const auto isChosen = [](std::string_view time) { return !time.empty() && time != "- - - -"; };
  const auto isEarlier = [](TimeOfDay begin, TimeOfDay end) {
    return std::chrono::floor<std::chrono::minutes>(begin) < std::chrono::floor<std::chrono::minutes>(end);
  };
  event.BeginTime = ParseTime(draft.BeginTime);
  event.EndTime = ParseTime(draft.EndTime);
  if (!event.BeginTime) {
    if (isChosen(draft.BeginTime) || isChosen(draft.EndTime)) AddAlert(state, 815);
  } else if (isChosen(draft.EndTime) && !(event.EndTime && isEarlier(*event.BeginTime, *event.EndTime))) {
    AddAlert(state, 816);
  }
}

void CheckRepetition(ComponentState& state, const OL_Event& event) {
  if (event.Type == "weekday") {
    if (event.RepeatWeekday.empty()) AddAlert(state, 817);
    if (event.RepeatFrequency.empty()) AddAlert(state, 818);
  }
  if (event.Type == "month" && event.RepeatDay.empty()) AddAlert(state, 819);
}

}  // namespace

std::optional<OL_Event> CheckEvent(ComponentState& state, const EventDraft& draft) {
  OL_Event event = draft.Event;
  if (event.EventName.empty()) AddAlert(state, 811);
  ReadDates(state, draft, event);
  ReadTimes(state, draft, event);
  CheckRepetition(state, event);
  return state.AlertText.empty() ? std::optional(std::move(event)) : std::nullopt;
}

}  // namespace orlune
