#pragma once

#include <unordered_map>
#include <vector>

#include "base/civil_time.h"

namespace orlune {

/// The days of one event that its rule does not say; each list in ascending order.
struct EventDays {
  std::vector<Date> Listed{};   ///< on which an event with listed days occurs
  std::vector<Date> LeftOut{};  ///< on which a repeating event does not occur, although its rule says so

  friend bool operator==(const EventDays&, const EventDays&) = default;
};

/// By `EventID`; events without such days are not in it.
using DaysOfEvents = std::unordered_map<int, EventDays>;

}  // namespace orlune
