#include "sessions/session_prolonger.h"

#include <cstddef>
#include <exception>
#include <utility>

namespace orlune {
namespace {

constexpr std::size_t kMostWaiting = 10'000;

}  // namespace

SessionProlonger::SessionProlonger(SessionDatabase database)
    : database_(std::move(database)), thread_([this](const std::stop_token& stop) { Work(stop); }) {}

void SessionProlonger::Prolong(const std::string& key, std::int64_t expiresAt) {
  const std::lock_guard lock(mutex_);
  if (waiting_.size() >= kMostWaiting) return;
  waiting_.insert_or_assign(key, expiresAt);
  added_.notify_one();
}

void SessionProlonger::Work(const std::stop_token& stop) {
  std::unique_lock lock(mutex_);
  while (added_.wait(lock, stop, [this] { return !waiting_.empty(); })) {
    const Expiries expiries = std::exchange(waiting_, {});
    lock.unlock();
    Write(expiries);
    lock.lock();
  }
}

void SessionProlonger::Write(const Expiries& expiries) const {
  try {
    SessionTable(database_).Prolong(expiries);
  } catch (const std::exception&) {
    // Their next requests ask again.
  }
}

}  // namespace orlune
