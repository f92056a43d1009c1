#include "icalendar/object_parts.h"

#include <algorithm>
#include <utility>

#include "base/ascii.h"
#include "exchange/calendar_text.h"

namespace orlune {
namespace {

constexpr std::string_view kTimeProperties[] = {"DTSTART", "DTEND",  "DURATION", "RRULE",
                                                "RDATE",   "EXDATE", "EXRULE",   "RECURRENCE-ID"};

}  // namespace

std::vector<const Component*> EventsOf(const std::vector<Component>& calendars) {
  std::vector<const Component*> events;
  for (const Component& calendar : calendars) {
    for (const Component& child : calendar.Children) {
      if (child.Is("VEVENT")) events.push_back(&child);
    }
  }
  return events;
}

bool IsTimeProperty(std::string_view name) {
  return std::ranges::any_of(kTimeProperties,
                             [name](std::string_view time) { return EqualsIgnoringAsciiCase(name, time); });
}

const Component* ObjectParts::EventAt(int place) const {
  const auto number = static_cast<std::size_t>(place / kPlacesOfEvent);
  if (number == 0) return Master;
  return number <= Overrides.size() ? Overrides[number - 1] : nullptr;
}

ObjectParts PartsOfObject(const std::vector<const Component*>& events, TextZones& zones) {
  ObjectParts parts;
  std::vector<std::pair<EventTimes, const Component*>> overrides;
  for (const Component* event : events) {
    EventTimes times(*event, zones);
    if (times.RecurrenceId()) {
      overrides.emplace_back(std::move(times), event);
    } else if (parts.Master != nullptr) {
      throw InvalidCalendarText(TextFault::kInvalidText,
                                "Two events have the same UID and no RECURRENCE-ID.");
    } else {
      parts.Master = event;
    }
  }
  const auto moment = [](const auto& entry) { return entry.first.RecurrenceId()->Moment; };
  std::ranges::stable_sort(overrides, {}, moment);
  for (std::size_t i = 0; i < overrides.size(); ++i) {
    if (i + 1 < overrides.size() && moment(overrides[i]) == moment(overrides[i + 1])) continue;
    parts.Overrides.push_back(overrides[i].second);
    parts.OverrideTimes.push_back(std::move(overrides[i].first));
  }
  return parts;
}

}  // namespace orlune
