#include "icalendar/time_values.h"

#include <algorithm>
#include <string>

#include "base/text.h"
#include "exchange/calendar_text.h"

namespace orlune {

using std::chrono::days;
using std::chrono::seconds;

namespace {

constexpr long kMostSeconds = 86'400L * 20'000;

[[noreturn]] void Refuse(std::string_view what, std::string_view text) {
  throw InvalidCalendarText(TextFault::kInvalidText, "\"" + std::string(text.substr(0, 40)) + "\" is not a " +
                                                         std::string(what) + ".");
}

int Digits(std::string_view text, std::size_t begin, std::size_t count) {
  const std::string_view digits = text.substr(begin, count);
  return IsDigits(digits) ? WholeNumber(digits).value_or(-1) : -1;
}

Date ReadDate(std::string_view text) {
  const std::chrono::year_month_day parts{std::chrono::year{Digits(text, 0, 4)},
                                          std::chrono::month{static_cast<unsigned>(Digits(text, 4, 2))},
                                          std::chrono::day{static_cast<unsigned>(Digits(text, 6, 2))}};
  if (Digits(text, 0, 8) < 0 || !parts.ok()) Refuse("date", text);
  const Date date{parts};
  if (date < kFirstDayOfText || date > kLastDayOfText) Refuse("date between the years 1900 and 2999", text);
  return date;
}

}  // namespace

CivilValue ReadCivilValue(std::string_view text) {
  text = TrimBlanks(text);
  CivilValue value;
  if (text.size() == 8) {
    value.Time.Day = ReadDate(text);
    value.IsDate = true;
    return value;
  }
  value.IsUtc = text.size() == 16 && (text.back() == 'Z' || text.back() == 'z');
  if ((text.size() != 15 && !value.IsUtc) || (text[8] != 'T' && text[8] != 't'))
    Refuse("date and time", text);
  value.Time.Day = ReadDate(text.substr(0, 8));
  const int hour = Digits(text, 9, 2);
  const int minute = Digits(text, 11, 2);
  const int second = Digits(text, 13, 2);
  if (hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 60)
    Refuse("date and time", text);
  value.Time.Time = std::chrono::hours{hour} + std::chrono::minutes{minute} + seconds{std::min(second, 59)};
  return value;
}

NominalDuration ReadDuration(std::string_view text) {
  const std::string_view whole = text = TrimBlanks(text);
  const bool isNegative = text.starts_with('-');
  if (isNegative || text.starts_with('+')) text.remove_prefix(1);
  if (isNegative || !text.starts_with('P') || text.size() < 3) Refuse("length of time", whole);
  text.remove_prefix(1);
  NominalDuration duration;
  while (!text.empty()) {
    if (text.front() == 'T') {
      text.remove_prefix(1);
      continue;
    }
    const std::size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
    const auto number = WholeNumber<long>(text.substr(0, digits));
    if (!number || digits == text.size() || *number > kMostSeconds) Refuse("length of time", whole);
    const char unit = text[digits];
    text.remove_prefix(digits + 1);
    if (unit == 'W') {
      duration.Days += days{7 * *number};
    } else if (unit == 'D') {
      duration.Days += days{*number};
    } else if (unit == 'H') {
      duration.Seconds += std::chrono::hours{*number};
    } else if (unit == 'M') {
      duration.Seconds += std::chrono::minutes{*number};
    } else if (unit == 'S') {
      duration.Seconds += seconds{*number};
    } else {
      Refuse("length of time", whole);
    }
    if (duration.Days > days{kMostDaysOfObject} || duration.Seconds > seconds{kMostSeconds})
      throw InvalidCalendarText(TextFault::kTooManyDays, "An event is longer than 20,000 days.");
  }
  return duration;
}

DateTime After(const DateTime& time, seconds duration) {
  const std::chrono::sys_seconds sum = std::chrono::sys_seconds{time.Day} + time.Time + duration;
  const Date day = std::chrono::floor<days>(sum);
  return {day, sum - day};
}

seconds Between(const DateTime& begin, const DateTime& end) {
  return std::chrono::sys_seconds{end.Day} + end.Time - (std::chrono::sys_seconds{begin.Day} + begin.Time);
}

}  // namespace orlune
