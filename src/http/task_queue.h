#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace orlune {

/// Runs tasks on threads of its own, in the order in which they were added. May be used by several threads at
/// once.
class TaskQueue {
 public:
  /// A task, which is told whether it has to be short because the queue is closing. Does not throw.
  using Task = std::function<void(bool isClosing)>;

  TaskQueue(std::size_t threads, std::size_t mostWaiting);
  ~TaskQueue() { Close(); }
  TaskQueue(const TaskQueue&) = delete;
  TaskQueue& operator=(const TaskQueue&) = delete;

  /// False when too many tasks are waiting, or the queue has been closed.
  bool Add(Task task);
  /// Returns when every task that was added has ended. May be called again.
  void Close();

 private:
  void Work();

  const std::size_t mostWaiting_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<Task> waiting_;
  bool isClosing_ = false;
  std::vector<std::jthread> threads_;
};

}  // namespace orlune
