#pragma once

#include <chrono>
#include <cstdint>
#include <ostream>
#include <string>

namespace orlune {

/// Shows the progress of a long task: on a terminal in one line that changes, elsewhere with a line every few
/// seconds.
class CopyProgress {
 public:
  CopyProgress(std::ostream& output, bool isTerminal) : output_(output), isTerminal_(isTerminal) {}

  /// `task` is such as "copying Events"; `total` may change meanwhile.
  void Begin(std::string task, std::int64_t done, std::int64_t total);
  void Advance(std::int64_t rows);
  void End();

 private:
  void Show();

  std::ostream& output_;
  bool isTerminal_;
  std::string task_;
  std::int64_t done_ = 0;
  std::int64_t total_ = 0;
  bool wasShown_ = false;
  std::chrono::steady_clock::time_point lastShown_;
};

}  // namespace orlune
