#include "base/repeated_task.h"

#include <condition_variable>
#include <mutex>
#include <random>
#include <utility>

namespace orlune {
namespace {

std::chrono::milliseconds RandomPause(std::chrono::milliseconds mean) {
  std::random_device randomness;
  std::uniform_int_distribution<std::chrono::milliseconds::rep> pause(mean.count() / 2, mean.count() * 3 / 2);
  return std::chrono::milliseconds(pause(randomness));
}

}  // namespace

RepeatedTask::RepeatedTask(std::chrono::milliseconds meanPause, std::function<void()> task)
    : thread_([meanPause, task = std::move(task)](const std::stop_token& stop) {
        std::mutex mutex;
        std::condition_variable_any wakeUp;
        std::unique_lock lock(mutex);
        while (!stop.stop_requested()) {
          wakeUp.wait_for(lock, stop, RandomPause(meanPause), [] { return false; });
          if (!stop.stop_requested()) task();
        }
      }) {}

}  // namespace orlune
