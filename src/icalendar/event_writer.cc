#include "icalendar/event_writer.h"

#include <algorithm>
#include <tuple>
#include <vector>

#include "exchange/row_text.h"
#include "icalendar/line_writer.h"

namespace orlune {

using std::chrono::days;

namespace {

constexpr TimeOfDay kLastSecond = days{1} - TimeOfDay{1};

/// An occurrence among those of several rows.
struct ListedDay {
  Date Day;
  const OL_Event* Event;
};

std::vector<ListedDay> DaysOfRows(std::span<const ObjectEvent> rows, const Week& week) {
  std::vector<ListedDay> listed;
  for (const ObjectEvent& row : rows) {
    for (const Date day : DaysOf(row, week)) listed.push_back({day, &row.Event});
  }
  std::ranges::stable_sort(listed, {}, [](const ListedDay& one) {
    return std::tuple(one.Day, one.Event->BeginTime.value_or(TimeOfDay{0}));
  });
  return listed;
}

bool HasTimesOf(const OL_Event& a, const OL_Event& b) {
  return a.BeginTime == b.BeginTime && EndTimeOf(a) == EndTimeOf(b);
}

}  // namespace

std::optional<TimeOfDay> EndTimeOf(const OL_Event& event) {
  if (!event.BeginTime || !event.EndTime || *event.EndTime <= *event.BeginTime) return std::nullopt;
  return event.EndTime;
}

std::string EventWriter::TimeProperty(std::string_view name, std::optional<TimeOfDay> time) const {
  std::string property(name);
  if (!time) {
    property += ";VALUE=DATE:";
  } else if (zone_.Definition.empty()) {
    property += ':';
  } else {
    property += ";TZID=" + zone_.Name + ":";
  }
  return property;
}

std::string EventWriter::TimeValue(Date day, std::optional<TimeOfDay> time) const {
  if (!time) return DateText(day);
  std::string value = DateTimeText({day, *time});
  if (zone_.Definition.empty()) value += 'Z';
  return value;
}

void EventWriter::AppendBegin(std::string& text, std::string_view name, const OL_Event& event,
                              Date day) const {
  AppendLine(text, TimeProperty(name, event.BeginTime), TimeValue(day, event.BeginTime));
}

void EventWriter::AppendEnd(std::string& text, const OL_Event& event, Date day) const {
  if (!event.BeginTime) {
    AppendLine(text, TimeProperty("DTEND", std::nullopt), DateText(day + days{1}));
  } else if (const auto end = EndTimeOf(event)) {
    AppendLine(text, TimeProperty("DTEND", end), TimeValue(day, end));
  }
}

void EventWriter::AppendDays(std::string& text, std::string_view name, const OL_Event& event,
                             std::span<const Date> dates) const {
  if (dates.empty()) return;
  std::string values;
  for (const Date day : dates) {
    if (!values.empty()) values += ',';
    values += TimeValue(day, event.BeginTime);
  }
  AppendLine(text, TimeProperty(name, event.BeginTime), values);
}

void EventWriter::AppendTimes(std::string& text, const OL_Event& event, const RowRule& rule) const {
  AppendBegin(text, "DTSTART", event, rule.First);
  AppendEnd(text, event, rule.LastOfSpan);
  if (!rule.Rule.empty()) {
    std::string value = rule.Rule;
    if (rule.Until) {
      value += ";UNTIL=";
      value +=
          event.BeginTime ? UtcText(zone_.Offsets.Moment({*rule.Until, kLastSecond})) : DateText(*rule.Until);
    }
    AppendLine(text, "RRULE:", value);
  }
  AppendDays(text, "RDATE", event, rule.More);
  AppendDays(text, "EXDATE", event, rule.LeftOut);
}

void EventWriter::AppendTimesOn(std::string& text, const OL_Event& event, Date day) const {
  AppendBegin(text, "DTSTART", event, day);
  AppendEnd(text, event, day);
}

void EventWriter::AppendListedTimes(std::string& text, std::span<const ObjectEvent> rows,
                                    const Week& week) const {
  const std::vector<ListedDay> listed = DaysOfRows(rows, week);
  if (listed.empty()) return;
  const OL_Event& first = *listed.front().Event;
  AppendTimesOn(text, first, listed.front().Day);
  std::vector<Date> alike;
  std::string periods;
  for (const ListedDay& one : std::span(listed).subspan(1)) {
    if (HasTimesOf(*one.Event, first)) {
      alike.push_back(one.Day);
      continue;
    }
    const TimeOfDay begin = one.Event->BeginTime.value_or(TimeOfDay{0});
    const TimeOfDay end = one.Event->BeginTime ? EndTimeOf(*one.Event).value_or(begin) : days{1};
    if (!periods.empty()) periods += ',';
    periods +=
        TimeValue(one.Day, begin) + "/PT" + std::to_string((end - begin) / std::chrono::minutes{1}) + "M";
  }
  AppendDays(text, "RDATE", first, alike);
  if (!periods.empty()) AppendLine(text, TimeProperty("RDATE;VALUE=PERIOD", TimeOfDay{0}), periods);
}

void EventWriter::AppendTexts(std::string& text, const OL_Event& event) {
  AppendLine(text, "SUMMARY:", EscapedText(PlainText(event.EventName)));
  if (!event.Comments.empty()) AppendLine(text, "DESCRIPTION:", EscapedText(PlainText(event.Comments)));
  AppendLine(text, "CLASS:", event.Private ? "PRIVATE" : "PUBLIC");
  if (!event.EventType.empty()) AppendLine(text, "CATEGORIES:", EscapedText(PlainText(event.EventType)));
  if (event.SuggestState == SuggestionState::kUndecided) AppendLine(text, "STATUS:TENTATIVE");
  if (event.SuggestState == SuggestionState::kAccepted) AppendLine(text, "STATUS:CONFIRMED");
  if (event.SuggestState == SuggestionState::kDeclined) AppendLine(text, "TRANSP:TRANSPARENT");
}

}  // namespace orlune
