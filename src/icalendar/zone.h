#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/civil_time.h"
#include "icalendar/content_lines.h"
#include "icalendar/recurrence.h"

namespace orlune {

/// The offsets of a time zone from UTC. Thread-safe.
class Zone {
 public:
  /// UTC itself.
  Zone() = default;
  /// Of a VTIMEZONE. Throws InvalidCalendarText.
  Zone(const Component& definition, WorkBudget& budget);

  DateTime Local(std::chrono::sys_seconds moment) const;
  /// A time that a change of the clocks leaves out is the one after it, of one that comes twice the first.
  std::chrono::sys_seconds Moment(const DateTime& local) const;
  /// Whether the clocks show this time exactly once.
  bool IsShownOnce(const DateTime& local) const;

 private:
  struct Transition {
    std::chrono::sys_seconds Begin;
    std::chrono::seconds Offset;
  };

  void AddObservance(const Component& observance, WorkBudget& budget);
  std::chrono::seconds OffsetAt(std::chrono::sys_seconds moment) const;

  std::chrono::seconds first_{};  ///< before all transitions
  std::vector<Transition> transitions_;
};

}  // namespace orlune
