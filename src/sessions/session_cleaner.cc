#include "sessions/session_cleaner.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "base/log_text.h"

namespace orlune {

SessionCleaner::SessionCleaner(std::vector<SessionDatabase> databases, spdlog::logger& log,
                               CleaningRules rules, TimeSource now)
    : databases_(std::move(databases)), log_(log), rules_(rules), now_(std::move(now)) {
  std::ranges::sort(databases_, {}, &SessionDatabase::Path);
  const auto isSame = [](const SessionDatabase& a, const SessionDatabase& b) { return a.Path == b.Path; };
  databases_.erase(std::unique(databases_.begin(), databases_.end(), isSame), databases_.end());
}

void SessionCleaner::Start() {
  task_.emplace(rules_.Pause, [this] { CleanUp(); });
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
