#pragma once

#include <chrono>

namespace orlune {

/// A calendar day without time or zone.
using Date = std::chrono::sys_days;

/// A time of day, counted from midnight; below 24 hours.
using TimeOfDay = std::chrono::seconds;

/// A civil date with its time of day, in the zone of the server.
struct DateTime {
  Date Day;
  TimeOfDay Time;

  friend bool operator==(const DateTime&, const DateTime&) = default;
};

}  // namespace orlune
