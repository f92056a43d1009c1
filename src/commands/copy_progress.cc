#include "commands/copy_progress.h"

#include <utility>

namespace orlune {

void CopyProgress::Begin(std::string task, std::int64_t done, std::int64_t total) {
  task_ = std::move(task);
  done_ = done;
  total_ = total;
  wasShown_ = false;
  lastShown_ = std::chrono::steady_clock::now();
}

void CopyProgress::Advance(std::int64_t rows) {
  done_ += rows;
  const auto interval = isTerminal_ ? std::chrono::milliseconds{200} : std::chrono::milliseconds{5000};
  if (std::chrono::steady_clock::now() - lastShown_ >= interval) Show();
}

void CopyProgress::End() {
  if (isTerminal_ || wasShown_) Show();
  if (isTerminal_) output_ << std::endl;  // NOLINT(performance-avoid-endl): it is waited for
}

void CopyProgress::Show() {
  if (isTerminal_) output_ << "\r\x1b[K";
  output_ << task_ << ": " << done_ << " of " << total_ << " rows";
  if (!isTerminal_) output_ << "\n";
  output_.flush();
  wasShown_ = true;
  lastShown_ = std::chrono::steady_clock::now();
}

}  // namespace orlune
