#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/civil_time.h"
#include "base/regional_settings.h"

namespace orlune {

/// The supported range of dates: 1 January 100 to 31 December 9999. Date arithmetic clamps to it.
extern const Date kFirstDate;
extern const Date kLastDate;

/// `date` in the region's short form: numeric, with a year of four digits.
std::string FormatShortDate(const RegionalSettings& regional, Date date);
/// The short date, a space, and the time as hh:mm:ss.
std::string FormatDateTime(const RegionalSettings& regional, const DateTime& dateTime);

/// Parses a date in the region's numeric order, its parts separated by "/", "-" or "." throughout, with a
/// year of four or two digits (00-29 are 2000-2029, 30-99 are 1930-1999); or in any region as year-month-day
/// with
/// "-" and a four-digit year. Surrounding blanks are ignored. Nothing when the text is not such a date.
std::optional<Date> ParseDate(const RegionalSettings& regional, std::string_view text);
/// Parses h:mm or hh:mm, optionally followed by :ss and by AM or PM. Surrounding blanks are ignored. Nothing
/// when the text is not such a time.
std::optional<TimeOfDay> ParseTime(std::string_view text);
/// Parses the format of `FormatDateTime`; a date alone is its midnight.
std::optional<DateTime> ParseDateTime(const RegionalSettings& regional, std::string_view text);

Date AddDays(Date date, int days);
/// The same day of another month, or that month's last day where it is shorter.
Date AddMonths(Date date, int months);

bool IsLeapYear(int year);
/// `month` is 1 to 12.
int DaysInMonth(int month, int year);
Date LastDayOfMonth(Date date);
/// 1 to 31.
int DayOfMonth(Date date);
/// 1 = Sunday ... 7 = Saturday.
int WeekdayNumber(Date date);

}  // namespace orlune
