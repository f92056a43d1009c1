#include "http/task_queue.h"

#include <utility>

namespace orlune {

TaskQueue::TaskQueue(std::size_t threads, std::size_t mostWaiting) : mostWaiting_(mostWaiting) {
  threads_.reserve(threads);
  for (std::size_t i = 0; i < threads; ++i) threads_.emplace_back([this] { Work(); });
}

bool TaskQueue::Add(Task task) {
  const std::lock_guard lock(mutex_);
  if (isClosing_ || waiting_.size() >= mostWaiting_) return false;
  waiting_.push_back(std::move(task));
  changed_.notify_one();
  return true;
}

void TaskQueue::Close() {
  {
    const std::lock_guard lock(mutex_);
    isClosing_ = true;
    changed_.notify_all();
  }
  threads_.clear();
}

void TaskQueue::Work() {
  std::unique_lock lock(mutex_);
  while (true) {
    changed_.wait(lock, [this] { return isClosing_ || !waiting_.empty(); });
    if (waiting_.empty()) return;
    const Task task = std::move(waiting_.front());
    waiting_.pop_front();
    const bool isClosing = isClosing_;
    lock.unlock();
    task(isClosing);
    lock.lock();
  }
}

}  // namespace orlune
