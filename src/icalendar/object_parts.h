#pragma once

#include <vector>

#include "icalendar/event_times.h"

namespace orlune {

/// The events in some calendars.
std::vector<const Component*> EventsOf(const std::vector<Component>& calendars);

/// Whether a property says when an event is.
bool IsTimeProperty(std::string_view name);

/// The events of one UID in a text.
struct ObjectParts {
  const Component* Master = nullptr;
  /// Changed occurrences, in the order of their RECURRENCE-IDs; of several with the same one the last.
  std::vector<const Component*> Overrides;
  std::vector<EventTimes> OverrideTimes;  ///< by place in `Overrides`

  /// The event of which a row of that place is made; null when there is none.
  const Component* EventAt(int place) const;
};

/// Rows of `Overrides[i]` have places from `kPlacesOfEvent * (i + 1)` on, those of the master from 0 on.
inline constexpr int kPlacesOfEvent = 1000;

/// Throws InvalidCalendarText when there are two masters.
ObjectParts PartsOfObject(const std::vector<const Component*>& events, TextZones& zones);

}  // namespace orlune
