#include "icalendar/object_writer.h"

#include <algorithm>

#include "base/ascii.h"
#include "icalendar/event_writer.h"
#include "icalendar/line_writer.h"
#include "icalendar/object_parts.h"

namespace orlune {
namespace {

constexpr std::size_t kUsualBytes = 1024;
constexpr std::size_t kMostSingleDays = 1000;
// Rows do not tell when they were changed.
constexpr std::string_view kStamp = "DTSTAMP:19700101T000000Z\r\n";

void BeginEvent(std::string& text, std::string_view uid) {
  text += "BEGIN:VEVENT\r\n";
  AppendLine(text, "UID:", EscapedText(uid));
  text += kStamp;
}

/// The rest of an event: what `kept` says, or else the row.
void EndEvent(std::string& text, const OL_Event& event, const Component* kept = nullptr) {
  if (kept == nullptr) {
    EventWriter::AppendTexts(text, event);
  } else {
    for (const ContentLine& line : kept->Lines) {
      const bool isWritten =
          EqualsIgnoringAsciiCase(line.Name, "UID") || EqualsIgnoringAsciiCase(line.Name, "DTSTAMP");
      if (!isWritten && !IsTimeProperty(line.Name)) AppendLine(text, line.Text);
    }
    for (const Component& child : kept->Children) AppendComponent(text, child);
  }
  text += "END:VEVENT\r\n";
}

/// Whether the event can stand in a file as it is: the file has one zone only.
bool FitsFile(const Component& event, const NamedZone& zone) {
  return std::ranges::all_of(event.Lines, [&](const ContentLine& line) {
    const auto id = ParameterOf(line, "TZID");
    return (!id || *id == zone.Name) && !EqualsIgnoringAsciiCase(line.Name, "RDATE");
  });
}

std::string_view DefinitionFor(const CalendarObject& object, const NamedZone& zone) {
  bool isNeeded = false;
  bool isRecent = true;
  for (const ObjectEvent& row : object.Events) {
    isNeeded |= row.Event.BeginTime.has_value();
    isRecent &= row.Event.BeginDate >= kRecent;
  }
  if (!isNeeded) return {};
  return isRecent ? zone.Recent : zone.Definition;
}

}  // namespace

std::string ObjectWriter::RowsOf(const CalendarObject& object, const Week& week) const {
  const EventWriter writer(zone_);
  std::string text;
  for (const ObjectEvent& row : object.Events) {
    const auto rule = RuleOf(row, week);
    if (!rule) continue;
    if (text.empty()) {
      BeginEvent(text, object.Uid);
      writer.AppendTimes(text, row.Event, *rule);
      EndEvent(text, row.Event);
      continue;
    }
    // Components that share a UID are changed occurrences of the first.
    std::vector<Date> dates = DaysOf(row, week);
    if (dates.size() > kMostSingleDays) dates.resize(kMostSingleDays);
    for (const Date day : dates) {
      BeginEvent(text, object.Uid);
      writer.AppendBegin(text, "RECURRENCE-ID", row.Event, day);
      writer.AppendTimesOn(text, row.Event, day);
      EndEvent(text, row.Event);
    }
  }
  return text;
}

std::string ObjectWriter::CalendarOf(const CalendarObject& object, const Week& week) const {
  const std::string rows = RowsOf(object, week);
  if (rows.empty()) return "";
  std::string text;
  text.reserve(kUsualBytes + rows.size() + zone_.Definition.size());
  text += kCalendarBegin;
  text += DefinitionFor(object, zone_);
  text += rows;
  text += kCalendarEnd;
  return text;
}

std::string ObjectWriter::EntryOf(const CalendarObject& object, const Week& week,
                                  const std::string& kept) const {
  const std::string unfolded = Unfolded(kept);
  const std::vector<Component> calendars = ReadComponents(unfolded);
  const std::vector<const Component*> events = EventsOf(calendars);
  std::string text;
  text.reserve(kUsualBytes);
  if (!events.empty() &&
      std::ranges::all_of(events, [this](const Component* event) { return FitsFile(*event, zone_); })) {
    for (const Component* event : events) AppendComponent(text, *event);
    return text;
  }
  TextZones zones(zone_, calendars);
  const ObjectParts parts = events.empty() ? ObjectParts() : PartsOfObject(events, zones);
  for (const ObjectEvent& row : object.Events)
    AppendFileRow(text, object, row, week, parts.EventAt(row.Place));
  return text;
}

void ObjectWriter::AppendFileRow(std::string& text, const CalendarObject& object, const ObjectEvent& row,
                                 const Week& week, const Component* kept) const {
  const auto rule = RuleOf(row, week);
  if (!rule) return;
  const EventWriter writer(zone_);
  const std::string uid = row.Place == 0 ? object.Uid : object.Uid + "-" + std::to_string(row.Place);
  if (rule->More.empty()) {
    BeginEvent(text, uid);
    writer.AppendTimes(text, row.Event, *rule);
    return EndEvent(text, row.Event, kept);
  }
  std::vector<Date> dates = rule->More;
  dates.insert(dates.begin(), rule->First);
  for (const Date day : dates) {
    BeginEvent(text, uid + "-" + DateText(day));
    writer.AppendTimesOn(text, row.Event, day);
    EndEvent(text, row.Event, kept);
  }
}

}  // namespace orlune
