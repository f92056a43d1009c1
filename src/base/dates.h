#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/civil_time.h"
#include "base/regional_settings.h"

namespace orlune {

/// The first and the last day that the system knows: 1 January 100 and 31 December 9999. Arithmetic that
/// would leave the range stays at its end.
extern const Date kFirstDate;
extern const Date kLastDate;

/// `date` in the region's short form: numeric, with a year of four digits.
std::string FormatShortDate(const RegionalSettings& regional, Date date);
/// The short date, a blank, and the time as hh:mm:ss.
std::string FormatDateTime(const RegionalSettings& regional, const DateTime& dateTime);

/// Reads a date in the region's own numeric order, its parts separated by any one of "/", "-" and ".", with a
/// year of four or of two digits (00-29 are 2000s, 30-99 are 1900s), or as year-month-day with "-". Blanks
/// around are ignored. Nothing when the text is no such date.
std::optional<Date> ParseDate(const RegionalSettings& regional, std::string_view text);
/// Reads h:mm or hh:mm, optionally followed by :ss and by AM or PM; blanks around are ignored. Nothing when
/// the text is no such time.
std::optional<TimeOfDay> ParseTime(std::string_view text);
/// Reads what `FormatDateTime` writes, or a date alone as its midnight.
std::optional<DateTime> ParseDateTime(const RegionalSettings& regional, std::string_view text);

Date AddDays(Date date, int days);
/// The same day of another month, or that month's last day where it is shorter.
Date AddMonths(Date date, int months);

bool IsLeapYear(int year);
/// `month` runs from 1.
int DaysInMonth(int month, int year);
Date LastDayOfMonth(Date date);
/// 1 to 31.
int DayOfMonth(Date date);
/// 1 = Sunday ... 7 = Saturday.
int WeekdayNumber(Date date);

}  // namespace orlune
