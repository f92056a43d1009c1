#pragma once

#include <string>
#include <string_view>

#include "base/civil_time.h"
#include "base/regional_settings.h"

namespace orlune {

/// `date` by the long date pattern of `names`, such as "Monday, March 15, 2004".
std::string FormatLongDate(const DateNames& names, Date date);
/// The stand-alone month name, a space and the year: "March 2004".
std::string FormatMonthAndYear(const DateNames& names, Date date);
const std::string& WeekdayName(const DateNames& names, Date date);
const std::string& AbbreviatedWeekdayName(const DateNames& names, Date date);
/// The stand-alone form, as over a calendar page.
const std::string& MonthName(const DateNames& names, Date date);
const std::string& AbbreviatedMonthName(const DateNames& names, Date date);
int YearNumber(Date date);
/// The year with at least four digits: "0100".
std::string FormatYear(Date date);

/// `timeFormat` is "Hh:Nn" for 14:30 or "Hh:Nn AM/PM" for 02:30 PM.
std::string FormatTime(std::string_view timeFormat, TimeOfDay time);

}  // namespace orlune
