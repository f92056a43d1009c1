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
  explicit ObjectMerger(std::shared_ptr<const NamedZone> zone) : zone_(std::move(zone)) {}

  /// `KeptText` where only those properties are changed that its rows say differently. What the rows say
  /// alone when it cannot be read any more.
  std::string Merged(const CalendarObject& object, const Week& week) const;

 private:
  const std::shared_ptr<const NamedZone> zone_;
};

}  // namespace orlune
