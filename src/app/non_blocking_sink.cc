#include "app/non_blocking_sink.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <climits>
#include <iterator>
#include <utility>

#include <fmt/format.h>
#include <poll.h>
#include <unistd.h>

namespace orlune {
namespace {

constexpr std::chrono::milliseconds kBetweenTries(100);

// A pipe that is ready takes this much without blocking.
bool IsReady(int descriptor) {
  pollfd state{descriptor, POLLOUT, 0};
  return poll(&state, 1, 0) > 0;
}

}  // namespace

NonBlockingSink::NonBlockingSink(int descriptor, std::size_t maxBacklog)
    : descriptor_(descriptor), maxBacklog_(maxBacklog), writer_([this] { WriteLater(); }) {}

NonBlockingSink::~NonBlockingSink() {
  {
    const std::lock_guard lock(mutex_);
    isStopping_ = true;
    filled_.notify_one();
  }
  writer_.join();
  WriteReady();
}

void NonBlockingSink::sink_it_(const spdlog::details::log_msg& message) {
  spdlog::memory_buf_t line;
  formatter_->format(message, line);
  Keep({line.data(), line.size()});
  WriteReady();
  if (!backlog_.empty()) filled_.notify_one();
}

void NonBlockingSink::Keep(std::string_view line) {
  if (backlog_.size() + line.size() > maxBacklog_) {
    ++dropped_;
    return;
  }
  if (dropped_ > 0)
    fmt::format_to(std::back_inserter(backlog_), "{} lines of the log were dropped\n",
                   std::exchange(dropped_, 0));
  backlog_ += line;
}

void NonBlockingSink::WriteReady() {
  std::size_t written = 0;
  while (written < backlog_.size() && IsReady(descriptor_)) {
    const std::size_t piece = std::min<std::size_t>(backlog_.size() - written, PIPE_BUF);
    const ssize_t size = write(descriptor_, backlog_.data() + written, piece);
    if (size < 0 && errno != EINTR) {
      if (errno != EAGAIN) written = backlog_.size();  // the reader is gone
      break;
    }
    written += static_cast<std::size_t>(std::max<ssize_t>(size, 0));
  }
  backlog_.erase(0, written);
}

void NonBlockingSink::WriteLater() {
  std::unique_lock lock(mutex_);
  while (true) {
    filled_.wait(lock, [this] { return isStopping_ || !backlog_.empty(); });
    if (isStopping_) return;
    filled_.wait_for(lock, kBetweenTries, [this] { return isStopping_; });
    WriteReady();
  }
}

}  // namespace orlune
