#pragma once

#include <memory>
#include <string>

#include "base/week.h"
#include "exchange/calendar_object.h"
#include "icalendar/time_zones.h"

namespace orlune {

/// Puts what rows say into the text that a client sent for them. Thread-safe.
class ObjectMerger {
 public:
  /// `zone` outlives it.
  explicit ObjectMerger(const NamedZone& zone) : zone_(zone) {}

  /// `KeptText` where only those properties are changed that its rows say differently. What the rows say
  /// alone when it cannot be read any more.
  std::string Merged(const CalendarObject& object, const Week& week) const;

 private:
  const NamedZone& zone_;
};

}  // namespace orlune
