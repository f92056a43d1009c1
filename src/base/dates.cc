#include "base/dates.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace orlune {

using std::chrono::day;
using std::chrono::days;
using std::chrono::last;
using std::chrono::month;
using std::chrono::months;
using std::chrono::year;
using std::chrono::year_month_day;
using std::chrono::year_month_day_last;

const Date kFirstDate = year{100} / 1 / 1;
const Date kLastDate = year{9999} / 12 / 31;

namespace {

std::string_view Trimmed(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(' ');
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(' ') - begin + 1);
}

struct Number {
  int Value = 0;
  std::size_t Digits = 0;
};

/// Consumes up to `mostDigits` digits at the front of `text`.
Number TakeNumber(std::string_view& text, std::size_t mostDigits) {
  Number number;
  while (number.Digits < mostDigits && number.Digits < text.size() && text[number.Digits] >= '0' &&
         text[number.Digits] <= '9') {
    number.Value = number.Value * 10 + (text[number.Digits] - '0');
    ++number.Digits;
  }
  text.remove_prefix(number.Digits);
  return number;
}

bool TakeCharacter(std::string_view& text, char character) {
  if (!text.starts_with(character)) return false;
  text.remove_prefix(1);
  return true;
}

std::optional<Date> ValidDate(int yearNumber, int monthNumber, int dayNumber) {
  const year_month_day date{year{yearNumber}, month{static_cast<unsigned>(monthNumber)},
                            day{static_cast<unsigned>(dayNumber)}};
  if (yearNumber < 100 || !date.ok()) return std::nullopt;
  return Date{date};
}

std::optional<int> FullYear(Number number) {
  if (number.Digits == 4) return number.Value;
  if (number.Digits == 2) return number.Value < 30 ? 2000 + number.Value : 1900 + number.Value;
  return std::nullopt;
}

std::optional<Date> ParseInOrder(const std::array<DateField, 3>& order, std::string_view separators,
                                 std::string_view text) {
  std::array<Number, 3> parts;
  char separator = 0;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (i == 1) {
      if (text.empty() || separators.find(text.front()) == std::string_view::npos) return std::nullopt;
      separator = text.front();
    }
    if (i > 0 && !TakeCharacter(text, separator)) return std::nullopt;
    parts[i] = TakeNumber(text, order[i] == DateField::kYear ? 4 : 2);
    if (parts[i].Digits == 0) return std::nullopt;
  }
  if (!text.empty()) return std::nullopt;

  const auto part = [&](DateField field) {
    return parts[static_cast<std::size_t>(std::find(order.begin(), order.end(), field) - order.begin())];
  };
  const std::optional<int> fullYear = FullYear(part(DateField::kYear));
  if (!fullYear) return std::nullopt;
  return ValidDate(*fullYear, part(DateField::kMonth).Value, part(DateField::kDay).Value);
}

/// Pads `number` with zeros to at least `width` digits.
char* WriteNumber(char* to, int number, int width) {
  std::array<char, 12> digits{};
  const char* end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
  for (auto missing = width - (end - digits.data()); missing > 0; --missing) *to++ = '0';
  return std::copy(static_cast<const char*>(digits.data()), end, to);
}

}  // namespace

std::string FormatShortDate(const RegionalSettings& regional, Date date) {
  const year_month_day parts{date};
  std::array<char, 32> text{};
  char* end = text.data();
  for (const DateField field : regional.ShortDateOrder) {
    if (end != text.data()) *end++ = regional.ShortDateSeparator;
    switch (field) {
      case DateField::kDay:
        end =
            WriteNumber(end, static_cast<int>(static_cast<unsigned>(parts.day())), regional.PadsDay ? 2 : 1);
        break;
      case DateField::kMonth:
        end = WriteNumber(end, static_cast<int>(static_cast<unsigned>(parts.month())),
                          regional.PadsMonth ? 2 : 1);
        break;
      case DateField::kYear:
        end = WriteNumber(end, static_cast<int>(parts.year()), 4);
        break;
    }
  }
  return {text.data(), end};
}

std::string FormatDateTime(const RegionalSettings& regional, const DateTime& dateTime) {
  const std::chrono::hh_mm_ss time{dateTime.Time};
  std::array<char, 9> text{' '};
  char* end = WriteNumber(text.data() + 1, static_cast<int>(time.hours().count()), 2);
  *end++ = ':';
  end = WriteNumber(end, static_cast<int>(time.minutes().count()), 2);
  *end++ = ':';
  end = WriteNumber(end, static_cast<int>(time.seconds().count()), 2);
  return FormatShortDate(regional, dateTime.Day).append(text.data(), end);
}

std::optional<Date> ParseDate(const RegionalSettings& regional, std::string_view text) {
  text = Trimmed(text);
  if (const auto date = ParseInOrder(regional.ShortDateOrder, "/-.", text)) return date;
  constexpr std::array kYearFirst{DateField::kYear, DateField::kMonth, DateField::kDay};
  const bool hasFourDigitYear = text.size() > 4 && text[4] == '-';
  return hasFourDigitYear ? ParseInOrder(kYearFirst, "-", text) : std::nullopt;
}

std::optional<TimeOfDay> ParseTime(std::string_view text) {
  text = Trimmed(text);
  const Number hour = TakeNumber(text, 2);
  if (hour.Digits == 0 || !TakeCharacter(text, ':')) return std::nullopt;
  const Number minute = TakeNumber(text, 2);
  Number second{0, 2};
  if (TakeCharacter(text, ':')) second = TakeNumber(text, 2);
  if (minute.Digits != 2 || second.Digits != 2 || minute.Value > 59 || second.Value > 59) return std::nullopt;

  int hours = hour.Value;
  const std::string_view half = Trimmed(text);
  if (!half.empty()) {
    if (half.size() != 2 || (half[1] | 0x20) != 'm' || hours < 1 || hours > 12) return std::nullopt;
    const char letter = static_cast<char>(half[0] | 0x20);
    if (letter != 'a' && letter != 'p') return std::nullopt;
    hours = hours % 12 + (letter == 'p' ? 12 : 0);
  }
  if (hours > 23) return std::nullopt;
  return std::chrono::hours{hours} + std::chrono::minutes{minute.Value} + std::chrono::seconds{second.Value};
}

std::optional<DateTime> ParseDateTime(const RegionalSettings& regional, std::string_view text) {
  text = Trimmed(text);
  const std::size_t blank = text.find(' ');
  const auto date = ParseDate(regional, text.substr(0, blank));
  if (!date) return std::nullopt;
  if (blank == std::string_view::npos) return DateTime{*date, TimeOfDay{0}};
  const auto time = ParseTime(text.substr(blank));
  if (!time) return std::nullopt;
  return DateTime{*date, *time};
}

Date AddDays(Date date, int dayCount) {
  return std::clamp(date + days{dayCount}, kFirstDate, kLastDate);
}

Date AddMonths(Date date, int monthCount) {
  const year_month_day from{date};
  const auto target = from.year() / from.month() + months{monthCount};
  const year_month_day same = target / from.day();
  const Date moved = same.ok() ? Date{same} : Date{target / last};
  return std::clamp(moved, kFirstDate, kLastDate);
}

bool IsLeapYear(int yearNumber) {
  return yearNumber % 4 == 0 && (yearNumber % 400 == 0 || yearNumber % 100 != 0);
}

int DaysInMonth(int monthNumber, int yearNumber) {
  const year_month_day_last monthEnd = year{yearNumber} / static_cast<int>(monthNumber) / last;
  return static_cast<int>(static_cast<unsigned>(monthEnd.day()));
}

Date LastDayOfMonth(Date date) {
  const year_month_day parts{date};
  return parts.year() / parts.month() / last;
}

int DayOfMonth(Date date) {
  return static_cast<int>(static_cast<unsigned>(year_month_day{date}.day()));
}

int WeekdayNumber(Date date) {
  return static_cast<int>(std::chrono::weekday{date}.c_encoding()) + 1;
}

}  // namespace orlune
