#include "app/clocks.h"

#include <ctime>

namespace orlune {

DateTime SystemClock::Now() const {
  const std::time_t moment = std::time(nullptr);
  std::tm local{};
  localtime_r(&moment, &local);
  const std::chrono::year_month_day day{std::chrono::year(local.tm_year + 1900),
                                        std::chrono::month(static_cast<unsigned>(local.tm_mon + 1)),
                                        std::chrono::day(static_cast<unsigned>(local.tm_mday))};
  return {day, std::chrono::hours(local.tm_hour) + std::chrono::minutes(local.tm_min) +
                   std::chrono::seconds(std::min(local.tm_sec, 59))};
}

}  // namespace orlune
