#pragma once

#include <chrono>
#include <cstdint>
#include <thread>
#include <vector>

#include <spdlog/logger.h>

#include "sessions/database_session_store.h"

namespace orlune {

struct CleaningRules {
  std::chrono::seconds Pause = std::chrono::minutes(5);  ///< between two rounds, half to one and a half of it
  std::int64_t MostSessions = 250'000;                   ///< in one database
};

/// Removes from databases the sessions that have expired, and, where there are too many, those that expire
/// next. Several servers may clean the same database at once.
class SessionCleaner {
 public:
  /// The drivers and the log outlive the cleaner.
  SessionCleaner(const SessionDatabases& databases, spdlog::logger& log, CleaningRules rules = {},
                 DatabaseSessionStore::TimeSource now = std::chrono::system_clock::now);

  /// Runs rounds in a thread of its own until the cleaner is destroyed; a round that runs is finished.
  void Start();
  /// One round. Failures go to the log.
  void CleanUp();

 private:
  void CleanUp(const SessionDatabase& database);

  std::vector<SessionDatabase> databases_;  // each once
  spdlog::logger& log_;
  CleaningRules rules_;
  DatabaseSessionStore::TimeSource now_;
  std::jthread thread_;
};

}  // namespace orlune
