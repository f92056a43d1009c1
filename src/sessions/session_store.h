#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "base/named_texts.h"

namespace orlune {

/// A session as its store had it when it was found.
struct KeptSession {
  std::string Id;
  NamedTexts Values;
  std::int64_t Version = 0;  ///< the store's own, to tell whether the values have changed since
};

/// Makes `changes` in `values`: an empty text removes the value of its name.
void ApplyChanges(const NamedTexts& changes, NamedTexts& values);

/// The running sessions of all hosting pages. One that is not asked for during its lifetime ends. May be used
/// by several threads at once. Everything throws DatabaseError when the sessions are out of reach; nothing
/// has changed then.
class SessionStore {
 public:
  virtual ~SessionStore() = default;

  /// The session that the first possible one of the identifiers `candidates` leads to at the page, its
  /// lifetime begun anew; nothing when there is none.
  virtual std::optional<KeptSession> Find(std::string_view pagePath,
                                          std::span<const std::string_view> candidates) = 0;
  /// Puts the values under a new identifier that nobody can guess, and returns it. The identifier `endedId`,
  /// unless it is "", leads nowhere from then on.
  virtual std::string Start(std::string_view pagePath, const NamedTexts& values,
                            std::string_view endedId) = 0;
  /// Makes the changes in what the session holds by now, so that only requests that change the same value
  /// overwrite each other's. Does nothing when the session has ended since it was found.
  virtual void Change(std::string_view pagePath, const KeptSession& found, const NamedTexts& changes) = 0;
  /// The identifier leads nowhere from now on.
  virtual void End(std::string_view pagePath, std::string_view id) = 0;
};

}  // namespace orlune
