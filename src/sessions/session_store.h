#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "base/named_texts.h"

namespace orlune {

/// The value that tells whose a session is.
inline constexpr std::string_view kLoginKey = "Login";
/// How many sessions a user can have; another one ends the least recently used of them. Whoever logs in again
/// and again fills no place but their own.
inline constexpr std::size_t kMaxSessionsOfLogin = 100;

/// A session as its store had it when it was found.
struct KeptSession {
  std::string Id;
  NamedTexts Values;
  std::int64_t Version = 0;  ///< the store's own, to detect that the values have changed since
};

/// Applies `changes` to `values`; an empty text removes the value of its name.
void ApplyChanges(const NamedTexts& changes, NamedTexts& values);

/// The sessions of one hosting page. One that is not asked for during its lifetime expires. May be used by
/// several threads at once. Everything throws DatabaseError when the sessions cannot be read or written;
/// nothing has changed then.
class SessionStore {
 public:
  virtual ~SessionStore() = default;

  /// The session of the first of the identifiers `candidates` that has one, its lifetime restarted; nothing
  /// when none has.
  virtual std::optional<KeptSession> Find(std::span<const std::string_view> candidates) = 0;
  /// Stores the values under a new identifier that nobody can guess, and returns it. Invalidates the
  /// identifier `endedId` unless it is "".
  virtual std::string Start(const NamedTexts& values, std::string_view endedId) = 0;
  /// Makes the changes in what the session holds by now, so that only requests that change the same value
  /// overwrite each other's. Does nothing when the session has ended since it was found.
  virtual void Change(const KeptSession& found, const NamedTexts& changes) = 0;
  virtual void End(std::string_view id) = 0;
};

}  // namespace orlune
