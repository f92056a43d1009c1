#include "pages/events/event_check.h"

#include "base/dates.h"
#include "request/texts.h"
#include "request/visit.h"

namespace orlune {
namespace {

void ReadDates(Visit& visit, const EventDraft& draft, OL_Event& event) {
  const RegionalSettings& regional = visit.Context.Regional;
  const auto begin = ParseDate(regional, draft.BeginDate);
  if (!begin) return AddAlert(visit, Text::kInvalidStartDate);
  event.BeginDate = *begin;
  if (event.Type == Repetition::kNone) return;

  const auto end = ParseDate(regional, draft.EndDate);
  if (!end) return AddAlert(visit, Text::kInvalidEndDate);
  event.EndDate = *end;
  const bool mayBeOneDay = event.Type == Repetition::kListed;
  if (*end <= *begin && !mayBeOneDay) AddAlert(visit, Text::kEndBeforeStart);
}

void ReadTimes(Visit& visit, const EventDraft& draft, OL_Event& event) {
  const auto isChosen = [](std::string_view time) { return !time.empty() && time != "- - - -"; };
  const auto isEarlier = [](TimeOfDay begin, TimeOfDay end) {
    return std::chrono::floor<std::chrono::minutes>(begin) < std::chrono::floor<std::chrono::minutes>(end);
  };
  event.BeginTime = ParseTime(draft.BeginTime);
  event.EndTime = ParseTime(draft.EndTime);
  if (!event.BeginTime) {
    if (isChosen(draft.BeginTime) || isChosen(draft.EndTime)) AddAlert(visit, Text::kStartTimeMissing);
  } else if (isChosen(draft.EndTime) && !(event.EndTime && isEarlier(*event.BeginTime, *event.EndTime))) {
    AddAlert(visit, Text::kEndTimeBeforeStartTime);
  }
}

void CheckRepetition(Visit& visit, const OL_Event& event) {
  if (event.Type == Repetition::kByWeekday) {
    if (event.RepeatWeekday.empty()) AddAlert(visit, Text::kWeekdayMissing);
    if (!event.RepeatFrequency) AddAlert(visit, Text::kFrequencyMissing);
  }
  if (event.Type == Repetition::kMonthly && event.RepeatDay.empty()) AddAlert(visit, Text::kDayMissing);
}

}  // namespace

std::optional<OL_Event> CheckEvent(Visit& visit, const EventDraft& draft) {
  OL_Event event = draft.Event;
  if (event.EventName.empty()) AddAlert(visit, Text::kTitleMissing);
  ReadDates(visit, draft, event);
  ReadTimes(visit, draft, event);
  CheckRepetition(visit, event);
  return visit.Alerts.empty() ? std::optional(std::move(event)) : std::nullopt;
}

}  // namespace orlune
