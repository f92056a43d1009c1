#include "sessions/session_cleaner.h"

#include <algorithm>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <random>
#include <utility>

#include "base/log_text.h"

namespace orlune {
namespace {

// Random, so that several servers of a database do not clean it at the same moment.
std::chrono::milliseconds RandomPause(std::chrono::milliseconds mean) {
  std::random_device randomness;
  std::uniform_int_distribution<std::chrono::milliseconds::rep> pause(mean.count() / 2, mean.count() * 3 / 2);
  return std::chrono::milliseconds(pause(randomness));
}

}  // namespace

SessionCleaner::SessionCleaner(std::vector<SessionDatabase> databases, spdlog::logger& log,
                               CleaningRules rules, TimeSource now)
    : databases_(std::move(databases)), log_(log), rules_(rules), now_(std::move(now)) {
  std::ranges::sort(databases_, {}, &SessionDatabase::Path);
  const auto isSame = [](const SessionDatabase& a, const SessionDatabase& b) { return a.Path == b.Path; };
  databases_.erase(std::unique(databases_.begin(), databases_.end(), isSame), databases_.end());
}

void SessionCleaner::Start() {
  thread_ = std::jthread([this](const std::stop_token& stop) {
    std::mutex mutex;
    std::condition_variable_any wakeUp;
    std::unique_lock lock(mutex);
    while (!stop.stop_requested()) {
      wakeUp.wait_for(lock, stop, RandomPause(rules_.Pause), [] { return false; });
      if (!stop.stop_requested()) CleanUp();
    }
  });
}

void SessionCleaner::CleanUp() {
  for (const SessionDatabase& database : databases_) {
    try {
      CleanUp(database);
    } catch (const std::exception& error) {
      log_.error("cannot remove expired sessions: {}", OneLine(error.what()));
    }
  }
}

void SessionCleaner::CleanUp(const SessionDatabase& database) {
  SessionTable table(database);
  table.RemoveExpired(std::chrono::floor<std::chrono::seconds>(now_()).time_since_epoch().count());
  for (const auto& [kind, most] : {std::pair(SessionKind::kUsers, rules_.MaxSessions),
                                   std::pair(SessionKind::kAnonymous, rules_.MaxSessions / 4)}) {
    std::int64_t excess = table.Count(kind) - most;
    if (excess > 0)
      log_.warn("session limit exceeded by {}; evicting the least recently used sessions", excess);
    for (; excess > 0; excess -= 1000) table.RemoveThousand(kind);
  }
}

}  // namespace orlune
