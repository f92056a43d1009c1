#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/page_host.h"
#include "server/session_store.h"

namespace orlune {

/// One request's view of its browser's session at one hosting page. A session starts with its first value,
/// gets another identifier when the login changes, and ends with its last value. Serves one thread.
class PageSession : public Session {
 public:
  /// `candidates` are the identifiers that the browser sent. The store outlives the session.
  PageSession(SessionStore& store, std::string_view pagePath,
              const std::vector<std::string_view>& candidates);

  std::string Get(std::string_view key) const override;
  void Set(std::string_view key, std::string_view value) override;

  /// The identifier that the browser has to be told, "" when the session has ended; nothing when the
  /// browser's own still holds.
  std::optional<std::string> NewIdentifier() const;

 private:
  void StartAnew();
  void End();

  SessionStore& store_;
  std::string_view pagePath_;
  std::string sentId_;
  std::string id_;
  std::shared_ptr<SessionValues> values_;
};

}  // namespace orlune
