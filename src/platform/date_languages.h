#pragma once

#include <string_view>

#include "base/regional_settings.h"

namespace orlune {

/// How one region writes dates, in other languages. Thread-safe.
class DateLanguages {
 public:
  virtual ~DateLanguages() = default;
  /// The region's dates with the names and the long date of the language `tag`, such as "de": its own ones
  /// when that is the region's language or is not known. As valid as this.
  virtual const RegionalSettings& In(std::string_view tag) = 0;
};

}  // namespace orlune
