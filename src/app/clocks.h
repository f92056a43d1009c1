#pragma once

#include "platform/clock.h"

namespace orlune {

/// The clock of the machine, in its time zone.
class SystemClock : public Clock {
 public:
  DateTime Now() const override;
};

/// Always tells the same time.
class FixedClock : public Clock {
 public:
  explicit FixedClock(const DateTime& now) : now_(now) {}
  DateTime Now() const override { return now_; }

 private:
  DateTime now_;
};

}  // namespace orlune
