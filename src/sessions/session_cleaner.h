#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include <spdlog/logger.h>

#include "base/repeated_task.h"
#include "sessions/session_table.h"

namespace orlune {

struct CleaningRules {
  std::chrono::seconds Pause = std::chrono::minutes(5);  ///< mean time between two rounds
  std::int64_t MaxSessions = 250'000;  ///< of users, in one database; a quarter of it of others
};

/// Removes expired sessions from databases, and evicts the least recently used ones beyond a limit. Several
/// servers may clean the same database at once.
class SessionCleaner {
 public:
  using TimeSource = std::function<std::chrono::system_clock::time_point()>;

  /// Cleans each database once a round, however many pages share it. The drivers and the log outlive the
  /// cleaner.
  SessionCleaner(std::vector<SessionDatabase> databases, spdlog::logger& log, CleaningRules rules = {},
                 TimeSource now = std::chrono::system_clock::now);

  /// Runs rounds in a thread of its own until the cleaner is destroyed, which waits for a running round.
  void Start();
  /// One round. Logs failures.
  void CleanUp();

 private:
  void CleanUp(const SessionDatabase& database);

  std::vector<SessionDatabase> databases_;
  spdlog::logger& log_;
  CleaningRules rules_;
  TimeSource now_;
  std::optional<RepeatedTask> task_;
};

}  // namespace orlune
