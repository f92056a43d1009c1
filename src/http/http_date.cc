#include "http/http_date.h"

#include <ctime>

namespace orlune {

std::string FormatHttpDate(std::chrono::sys_seconds moment) {
  const std::time_t seconds = std::chrono::system_clock::to_time_t(moment);
  std::tm parts{};
  gmtime_r(&seconds, &parts);
  char text[40];
  return {text, std::strftime(text, sizeof text, "%a, %d %b %Y %H:%M:%S GMT", &parts)};
}

}  // namespace orlune
