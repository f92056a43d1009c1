#pragma once

#include <array>
#include <string>

namespace orlune {

/// The words that dates are written with. Months run from January, weekdays from Sunday.
struct DateNames {
  std::array<std::string, 12> Months;             ///< standing alone, as over a calendar page
  std::array<std::string, 12> AbbreviatedMonths;  ///< standing alone
  std::array<std::string, 12> LongDateMonths;     ///< as the long date inflects them
  std::array<std::string, 7> Weekdays;
  std::array<std::string, 7> AbbreviatedWeekdays;
  /// "dddd" stands for the weekday, "mmmm" for the long date's month, "d" and "dd" for the day, "yyyy" for
  /// the year; a text between apostrophes and every other character stand for themselves, two apostrophes for
  /// one.
  std::string LongDatePattern;
};

enum class DateField { kDay, kMonth, kYear };

/// How one region writes dates; data only.
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
