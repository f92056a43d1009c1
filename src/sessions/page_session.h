#pragma once

#include <exception>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/page_host.h"
#include "sessions/session_store.h"

namespace orlune {

/// One request's view of its browser's session: read from the page's store once, changed here, and written
/// back with `Save`. A session starts with its first value, gets another identifier when the login changes,
/// and ends with its last value. Used by one thread.
class PageSession : public Session {
 public:
  /// `candidates` are what the browser sent as identifiers; only the first few well-formed ones are looked
  /// up. The store outlives the session. An error of the store is thrown only when a value is read or set, so
  /// that a page that needs none can still answer.
  PageSession(SessionStore& store, const std::vector<std::string_view>& candidates);

  /// Whether the browser named a session that the store holds.
  bool IsKnown() const { return found_.has_value(); }
  std::string Get(std::string_view key) const override;
  /// Ignores a value of more than 2000 bytes, which no page sets.
  void Set(std::string_view key, std::string_view value) override;

  /// Writes what has changed to the store. Throws DatabaseError.
  void Save();
  /// Whether what has changed tells who is logged in, or whether anybody is.
  bool ChangesLogin() const { return hasLoginChanged_; }
  /// The identifier to send to the browser after `Save`, "" when the session has ended; nothing when the
  /// browser's own is still valid.
  const std::optional<std::string>& NewIdentifier() const { return newIdentifier_; }

 private:
  void Find(const std::vector<std::string_view>& candidates);
  void RequireValues() const;

  SessionStore& store_;
  std::exception_ptr failure_;
  std::optional<KeptSession> found_;
  NamedTexts values_;
  NamedTexts changes_;
  bool hasLoginChanged_ = false;
  std::optional<std::string> newIdentifier_;
};

}  // namespace orlune
