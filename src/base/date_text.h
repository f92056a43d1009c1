#pragma once

#include <string>
#include <string_view>

#include "base/civil_time.h"
#include "base/regional_settings.h"

namespace orlune {

/// The long date of the region, with the words of `names`.
std::string FormatLongDate(const DateNames& names, Date date);
/// The month, standing alone, a blank, and the year.
std::string FormatMonthAndYear(const DateNames& names, Date date);
const std::string& WeekdayName(const DateNames& names, Date date);
const std::string& AbbreviatedWeekdayName(const DateNames& names, Date date);
/// The month, standing alone.
const std::string& MonthName(const DateNames& names, Date date);
const std::string& AbbreviatedMonthName(const DateNames& names, Date date);
int YearNumber(Date date);
/// The year in four digits.
std::string FormatYear(Date date);

/// `time` by the user's clock: "Hh:Nn" gives 14:30, "Hh:Nn AM/PM" gives 02:30 PM.
std::string FormatTime(std::string_view timeFormat, TimeOfDay time);

}  // namespace orlune
