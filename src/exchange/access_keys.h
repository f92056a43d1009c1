#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/civil_time.h"
#include "base/regional_settings.h"
#include "platform/database.h"
#include "platform/secrets.h"

namespace orlune {

// Passwords of devices, and links to feeds: made and named by a user, shown once, stored as digests, revoked.
// Functions throw DatabaseError.

inline constexpr std::size_t kMostKeysOfUser = 50;

/// An app password or a secret link.
struct AccessKey {
  int Id = 0;
  std::string Label;
  std::string Calendar;  ///< of a link: a calendar, or "@" and a group view
  Date Created;
  std::optional<Date> LastUsed;
};

std::vector<AccessKey> AppPasswordsOf(Connection& database, std::string_view loginName);
std::vector<AccessKey> SecretLinksOf(Connection& database, std::string_view loginName);

/// What making a key needs. Owns nothing.
struct KeyTools {
  orlune::Secrets& Secrets;
  const RegionalSettings& Regional;
  Date Today;
};
/// The new secret, which cannot be read again; nothing when the user has `kMostKeysOfUser`.
std::optional<std::string> MakeAppPassword(Connection& database, const KeyTools& tools,
                                           std::string_view loginName, std::string_view label);
std::optional<std::string> MakeSecretLink(Connection& database, const KeyTools& tools,
                                          std::string_view loginName, std::string_view calendar,
                                          std::string_view label);

/// Only the user's own; another number changes nothing.
void RevokeAppPassword(Connection& database, std::string_view loginName, int id);
void RevokeSecretLink(Connection& database, std::string_view loginName, int id);

struct FoundPassword {
  int Id = 0;
  std::optional<Date> LastUsed;
};
/// The app password if it is one of this user's.
std::optional<FoundPassword> FindAppPassword(Connection& database, const Secrets& secrets,
                                             std::string_view loginName, std::string_view password);
struct FeedTarget {
  int LinkId = 0;
  std::string LoginName;
  std::string Calendar;
  std::optional<Date> LastUsed;
};
std::optional<FeedTarget> FindSecretLink(Connection& database, const Secrets& secrets,
                                         std::string_view secret);

/// Writes the day of the last use, unless it is noted.
void NoteUseOfAppPassword(Connection& database, const KeyTools& tools, const FoundPassword& password);
void NoteUseOfSecretLink(Connection& database, const KeyTools& tools, const FeedTarget& link);

}  // namespace orlune
