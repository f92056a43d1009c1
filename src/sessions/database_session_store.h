#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <string>

#include "sessions/session_store.h"
#include "sessions/session_table.h"

namespace orlune {

/// Each hosting page's database, by the page's path.
using SessionDatabases = std::map<std::string, SessionDatabase, std::less<>>;

/// Keeps the sessions of a hosting page in that page's own database: they outlive the process, and all
/// servers of the database share them. An identifier is stored as a hash only, so that nobody takes over a
/// login who reads the database. The lifetime begins anew only when a tenth of it has gone, so a session
/// rests for nine tenths of it at least.
class DatabaseSessionStore : public SessionStore {
 public:
  using TimeSource = std::function<std::chrono::system_clock::time_point()>;

  /// The drivers outlive the store, which is asked for pages with a database only.
  DatabaseSessionStore(SessionDatabases databases, std::chrono::seconds lifetime,
                       TimeSource now = std::chrono::system_clock::now);

  std::optional<KeptSession> Find(std::string_view pagePath,
                                  std::span<const std::string_view> candidates) override;
  std::string Start(std::string_view pagePath, const NamedTexts& values, std::string_view endedId) override;
  void Change(std::string_view pagePath, const KeptSession& found, const NamedTexts& changes) override;
  void End(std::string_view pagePath, std::string_view id) override;

 private:
  SessionTable Open(std::string_view pagePath) const;
  std::int64_t Now() const;

  SessionDatabases databases_;
  std::chrono::seconds lifetime_;
  TimeSource now_;
};

}  // namespace orlune
