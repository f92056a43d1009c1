#pragma once

#include "base/regional_settings.h"

namespace orlune::testing {

/// The short date as 3/5/2004; no names.
inline RegionalSettings AmericanSettings() {
  RegionalSettings settings{};
  settings.Region = "en_US";
  settings.ShortDateOrder = {DateField::kMonth, DateField::kDay, DateField::kYear};
  settings.ShortDateSeparator = '/';
  return settings;
}

}  // namespace orlune::testing
