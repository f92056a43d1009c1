#include "base/date_text.h"

#include "base/dates.h"

namespace orlune {
namespace {

unsigned MonthIndex(Date date) {
  return static_cast<unsigned>(std::chrono::year_month_day{date}.month()) - 1;
}

void AppendTwoDigits(std::string& text, int number) {
  text += static_cast<char>('0' + number / 10);
  text += static_cast<char>('0' + number % 10);
}

/// Consumes a text between apostrophes at the front of `pattern`.
std::string TakeQuoted(std::string_view& pattern) {
  std::string quoted;
  pattern.remove_prefix(1);
  if (pattern.starts_with('\'')) quoted = "'";
  const std::size_t end = pattern.find('\'');
  quoted += pattern.substr(0, end);
  pattern.remove_prefix(end == std::string_view::npos ? pattern.size() : end + 1);
  return quoted;
}

}  // namespace

int YearNumber(Date date) {
  return static_cast<int>(std::chrono::year_month_day{date}.year());
}

std::string FormatYear(Date date) {
  std::string digits = std::to_string(YearNumber(date));
  return digits.insert(0, digits.size() < 4 ? 4 - digits.size() : 0, '0');
}

std::string FormatLongDate(const DateNames& names, Date date) {
  std::string text;
  std::string_view pattern = names.LongDatePattern;
  const auto take = [&](std::string_view field) {
    if (!pattern.starts_with(field)) return false;
    pattern.remove_prefix(field.size());
    return true;
  };
  while (!pattern.empty()) {
    if (take("dddd")) {
      text += WeekdayName(names, date);
    } else if (take("mmmm")) {
      text += names.LongDateMonths[MonthIndex(date)];
    } else if (take("yyyy")) {
      text += FormatYear(date);
    } else if (take("dd")) {
      AppendTwoDigits(text, DayOfMonth(date));
    } else if (take("d")) {
      text += std::to_string(DayOfMonth(date));
    } else if (pattern.front() == '\'') {
      text += TakeQuoted(pattern);
    } else {
      text += pattern.front();
      pattern.remove_prefix(1);
    }
  }
  return text;
}

std::string FormatMonthAndYear(const DateNames& names, Date date) {
  return MonthName(names, date) + ' ' + FormatYear(date);
}

const std::string& WeekdayName(const DateNames& names, Date date) {
  return names.Weekdays[static_cast<std::size_t>(WeekdayNumber(date) - 1)];
}

const std::string& AbbreviatedWeekdayName(const DateNames& names, Date date) {
  return names.AbbreviatedWeekdays[static_cast<std::size_t>(WeekdayNumber(date) - 1)];
}

const std::string& MonthName(const DateNames& names, Date date) {
  return names.Months[MonthIndex(date)];
}

const std::string& AbbreviatedMonthName(const DateNames& names, Date date) {
  return names.AbbreviatedMonths[MonthIndex(date)];
}

std::string FormatTime(std::string_view timeFormat, TimeOfDay time) {
  const std::chrono::hh_mm_ss parts{time};
  const int hour = static_cast<int>(parts.hours().count());
  const bool hasTwelveHours = timeFormat.ends_with("AM/PM");
  std::string text;
  AppendTwoDigits(text, hasTwelveHours ? (hour + 11) % 12 + 1 : hour);
  text += ':';
  AppendTwoDigits(text, static_cast<int>(parts.minutes().count()));
  if (hasTwelveHours) text += hour < 12 ? " AM" : " PM";
  return text;
}

}  // namespace orlune
