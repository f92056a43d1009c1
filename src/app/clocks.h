#pragma once

#include <optional>
#include <string>

#include "platform/clock.h"

namespace orlune {

/// The clock of the machine, in its time zone.
class SystemClock : public Clock {
 public:
  DateTime Now() const override;
};

/// A clock that stands still.
class FixedClock : public Clock {
 public:
  explicit FixedClock(const DateTime& now) : now_(now) {}
  DateTime Now() const override { return now_; }

 private:
  DateTime now_;
};

/// Reads a time such as "2004-03-15T10:30:00"; nothing for anything else.
std::optional<DateTime> ParseMoment(const std::string& text);

}  // namespace orlune
