#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

#include "sessions/session_prolonger.h"
#include "sessions/session_store.h"
#include "sessions/session_table.h"

namespace orlune {

/// Keeps the sessions of a hosting page in that page's own database: they outlive the process, and all
/// servers of the database share them. Stores only a hash of an identifier, so that nobody who reads the
/// database can take over a login. To save writes it restarts a lifetime only when a tenth of it has gone, so
/// a session may expire after nine tenths of it.
class DatabaseSessionStore : public SessionStore {
 public:
  using TimeSource = std::function<std::chrono::system_clock::time_point()>;

  /// The database's driver outlives the store, and so does `prolonger`, which restarts the lifetimes. Pages
  /// may share a database; their sessions stay apart by `pagePath`.
  DatabaseSessionStore(SessionDatabase database, SessionProlonger& prolonger, std::string pagePath,
                       std::chrono::seconds lifetime, TimeSource now = std::chrono::system_clock::now);

  std::optional<KeptSession> Find(std::span<const std::string_view> candidates) override;
  std::string Start(const NamedTexts& values, std::string_view endedId) override;
  void Change(const KeptSession& found, const NamedTexts& changes) override;
  void End(std::string_view id) override;

 private:
  std::string KeyOf(std::string_view id) const;
  std::int64_t Now() const;

  SessionDatabase database_;
  SessionProlonger& prolonger_;
  std::string pagePath_;
  std::chrono::seconds lifetime_;
  TimeSource now_;
};

}  // namespace orlune
