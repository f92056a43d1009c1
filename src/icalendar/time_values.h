#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "base/civil_time.h"
#include "icalendar/content_lines.h"

namespace orlune {

/// The first and the last day that texts may name.
inline constexpr Date kFirstDayOfText = std::chrono::year{1900} / 1 / 1;
inline constexpr Date kLastDayOfText = std::chrono::year{2999} / 12 / 31;

/// A DATE or DATE-TIME as it is written.
struct CivilValue {
  DateTime Time{};
  bool IsDate = false;
  bool IsUtc = false;
};

/// Throws InvalidCalendarText for anything else, and for days out of 1900 to 2999.
CivilValue ReadCivilValue(std::string_view text);

/// A DURATION: whole days of civil time, and seconds.
struct NominalDuration {
  std::chrono::days Days{};
  std::chrono::seconds Seconds{};
};
/// Throws InvalidCalendarText.
NominalDuration ReadDuration(std::string_view text);

/// The civil time so many seconds later.
DateTime After(const DateTime& time, std::chrono::seconds seconds);
std::chrono::seconds Between(const DateTime& begin, const DateTime& end);
inline bool IsBefore(const DateTime& a, const DateTime& b) {
  return Between(a, b) > std::chrono::seconds{0};
}

}  // namespace orlune
