#pragma once

#include <chrono>
#include <cstddef>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <spdlog/logger.h>

namespace orlune {

/// A warning about something that strangers can cause as often as they like: it is logged when it happens,
/// then once a minute at most. May be used by several threads at once.
class OccasionalWarning {
 public:
  /// `log` outlives the warning.
  OccasionalWarning(spdlog::logger& log, std::string text) : log_(log), text_(std::move(text)) {}

  /// `about` stands behind the text, as an address does.
  void Report(std::string_view about = {});

 private:
  using Clock = std::chrono::steady_clock;

  spdlog::logger& log_;
  const std::string text_;
  std::mutex mutex_;
  std::size_t unreported_ = 0;
  std::optional<Clock::time_point> reportedAt_;
};

}  // namespace orlune
