#pragma once

#include <string>
#include <vector>

#include "model/event_days.h"
#include "model/ol_event.h"

namespace orlune {

/// One row of a calendar object. Where one row cannot say what an object of iCalendar says, several do: a
/// changed day of a series is a row of its own, and so are the days of an event that goes over midnight, and
/// the occurrences whose time of day differs, as after a change to daylight-saving time elsewhere.
struct ObjectEvent {
  OL_Event Event;
  EventDays Days{};
  int Place = 0;  ///< which of the rows of its object it is, in the order in which `CalendarText` plans them
};

/// A calendar object resource (RFC 4791, section 4.1): the events of one calendar that share a UID.
struct CalendarObject {
  int Id = 0;        ///< `ObjectID`; 0 for an event that was made on a page and that no client has changed
  std::string Name;  ///< the last segment of its address, not encoded
  std::string Uid;
  std::string KeptText{};  ///< what a client sent, whole; "" when none did
  bool IsAsKept = false;   ///< the rows say what `KeptText` says, to which nobody has changed anything since
  std::vector<ObjectEvent> Events;  ///< at least one, by `Place`
};

}  // namespace orlune
