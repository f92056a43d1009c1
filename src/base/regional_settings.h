#pragma once

#include <array>
#include <string>

namespace orlune {

/// Names of months, from January on, and weekdays, from Sunday on.
struct DateNames {
  std::array<std::string, 12> Months;             ///< stand-alone form, as over a calendar page
  std::array<std::string, 12> AbbreviatedMonths;  ///< stand-alone form
  std::array<std::string, 12> LongDateMonths;     ///< as inflected in the long date
  std::array<std::string, 7> Weekdays;
  std::array<std::string, 7> AbbreviatedWeekdays;
  /// "dddd" stands for the weekday, "mmmm" for the long date's month, "d" and "dd" for the day, "yyyy" for
  /// the year. Text between apostrophes and all other characters are literal; two apostrophes are one.
  std::string LongDatePattern;
};

enum class DateField { kDay, kMonth, kYear };

/// The date formats of one region.
struct RegionalSettings {
  std::string Region;  ///< such as "en_US"
  std::array<DateField, 3> ShortDateOrder;
  char ShortDateSeparator;  ///< "/", "-" or "."
  bool PadsDay;             ///< two digits for days below 10
  bool PadsMonth;
  DateNames Names;
  DateNames UpperCaseNames;  ///< the same in upper case by the region's rules
};

}  // namespace orlune
