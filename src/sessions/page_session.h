#pragma once

#include <exception>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/page_host.h"
#include "sessions/session_store.h"

namespace orlune {

/// One request's view of its browser's session at one hosting page: read from the store once, changed here,
/// and kept with `Save`. A session starts with its first value, gets another identifier when the login
/// changes, and ends with its last value. Serves one thread.
class PageSession : public Session {
 public:
  /// `candidates` are what the browser sent as identifiers; only the first few that can be one are looked
  /// for. The store outlives the session. What it throws here is thrown when a value is asked for or set, so
  /// that a page that needs none can still answer.
  PageSession(SessionStore& store, std::string_view pagePath,
              const std::vector<std::string_view>& candidates);

  std::string Get(std::string_view key) const override;
  /// A text that is too long to be one of the pages' is not kept.
  void Set(std::string_view key, std::string_view value) override;

  /// Gives the store what has changed. Throws DatabaseError.
  void Save();
  /// The identifier that the browser has to be told after `Save`, "" when the session has ended; nothing when
  /// the browser's own still holds.
  const std::optional<std::string>& NewIdentifier() const { return newIdentifier_; }

 private:
  void Find(const std::vector<std::string_view>& candidates);
  void RequireValues() const;

  SessionStore& store_;
  std::string_view pagePath_;
  std::exception_ptr failure_;
  std::optional<KeptSession> found_;
  NamedTexts values_;
  NamedTexts changes_;
  bool needsNewIdentifier_ = false;
  std::optional<std::string> newIdentifier_;
};

}  // namespace orlune
