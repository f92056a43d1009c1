#pragma once

#include <string>

#include "base/regional_settings.h"

namespace orlune {

/// How `region`, such as "en_US" or "fi_FI", writes dates, in the Gregorian calendar and with Latin digits. A
/// month that the region's long date writes as a number stands among `LongDateMonths` as that number. Throws
/// std::invalid_argument, with a sentence for the operator, when the region is not known.
RegionalSettings LoadRegionalSettings(const std::string& region);

}  // namespace orlune
