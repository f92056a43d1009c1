#pragma once

#include "base/civil_time.h"

namespace orlune {

/// Tells the civil time. May be asked from several threads at once.
class Clock {
 public:
  virtual ~Clock() = default;
  virtual DateTime Now() const = 0;
};

}  // namespace orlune
