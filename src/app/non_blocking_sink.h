#pragma once

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

#include <spdlog/sinks/base_sink.h>

namespace orlune {

/// A log sink on a file descriptor that never blocks. While its reader is slow, lines are buffered up to a
/// limit and written later; those beyond it are dropped, and the next line that is written is preceded by
/// their number. Thread-safe.
class NonBlockingSink : public spdlog::sinks::base_sink<std::mutex> {
 public:
  /// Writes to `descriptor`, which the caller closes after the log, and buffers `maxBacklog` bytes.
  explicit NonBlockingSink(int descriptor, std::size_t maxBacklog = std::size_t{1} << 20U);
  NonBlockingSink(const NonBlockingSink&) = delete;
  NonBlockingSink& operator=(const NonBlockingSink&) = delete;
  /// Writes what the reader takes at once.
  ~NonBlockingSink() override;

 protected:
  void sink_it_(const spdlog::details::log_msg& message) override;
  void flush_() override {}

 private:
  void Keep(std::string_view line);
  void WriteReady();
  void WriteLater();

  const int descriptor_;
  const std::size_t maxBacklog_;
  std::string backlog_;  // guarded by the sink's mutex, as all below
  std::size_t dropped_ = 0;
  bool isStopping_ = false;
  std::condition_variable filled_;
  std::jthread writer_;
};

}  // namespace orlune
