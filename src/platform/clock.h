#pragma once

#include "base/civil_time.h"

namespace orlune {

/// The current civil time. Thread-safe.
class Clock {
 public:
  virtual ~Clock() = default;
  virtual DateTime Now() const = 0;
};

}  // namespace orlune
