#include "http/occasional_warning.h"

#include <fmt/format.h>

namespace orlune {

void OccasionalWarning::Report(std::string_view about) {
  const std::lock_guard lock(mutex_);
  const auto now = Clock::now();
  if (reportedAt_ && now < *reportedAt_ + std::chrono::minutes(1)) {
    ++unreported_;
    return;
  }
  const std::size_t more = std::exchange(unreported_, 0);
  log_.warn("{}{}{}", text_, about,
            more == 0 ? "" : fmt::format(", and {} times more since the last such line", more));
  reportedAt_ = now;
}

}  // namespace orlune
