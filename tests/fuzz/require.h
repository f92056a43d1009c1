#pragma once

#include <cstdlib>

/// Aborts, which a fuzzer reports, unless the property holds.
inline void Require(bool holds) {
  if (!holds) std::abort();
}
