#include "app/clocks.h"

#include <algorithm>
#include <ctime>
#include <iomanip>
#include <sstream>

namespace orlune {
namespace {

std::chrono::year_month_day DayOf(const std::tm& parts) {
  return {std::chrono::year(parts.tm_year + 1900),
          std::chrono::month(static_cast<unsigned>(parts.tm_mon + 1)),
          std::chrono::day(static_cast<unsigned>(parts.tm_mday))};
}

TimeOfDay TimeOf(const std::tm& parts) {
  return std::chrono::hours(parts.tm_hour) + std::chrono::minutes(parts.tm_min) +
         std::chrono::seconds(parts.tm_sec);
}

}  // namespace

DateTime SystemClock::Now() const {
  const std::time_t moment = std::time(nullptr);
  std::tm local{};
  localtime_r(&moment, &local);
  local.tm_sec = std::min(local.tm_sec, 59);  // a leap second is 60
  return {DayOf(local), TimeOf(local)};
}

std::optional<DateTime> ParseMoment(const std::string& text) {
  std::tm parts{};
  std::istringstream stream(text);
  stream >> std::get_time(&parts, "%Y-%m-%dT%H:%M:%S");
  if (stream.fail() || text.size() != 19 || !DayOf(parts).ok() || parts.tm_sec > 59) return std::nullopt;
  return DateTime{DayOf(parts), TimeOf(parts)};
}

}  // namespace orlune
