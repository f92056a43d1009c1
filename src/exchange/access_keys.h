#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/civil_time.h"
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

/// The new secret, which cannot be read again; nothing when the user has `kMostKeysOfUser`.
std::optional<std::string> MakeAppPassword(Connection& database, Secrets& secrets, std::string_view loginName,
                                           std::string_view label, Date today);
std::optional<std::string> MakeSecretLink(Connection& database, Secrets& secrets, std::string_view loginName,
                                          std::string_view calendar, std::string_view label, Date today);

/// Only the user's own; another number changes nothing.
void RevokeAppPassword(Connection& database, std::string_view loginName, int id);
void RevokeSecretLink(Connection& database, std::string_view loginName, int id);

/// The number of the app password if it is one of this user's.
std::optional<int> FindAppPassword(Connection& database, const Secrets& secrets, std::string_view loginName,
                                   std::string_view password);
struct FeedTarget {
  int LinkId = 0;
  std::string LoginName;
  std::string Calendar;
};
std::optional<FeedTarget> FindSecretLink(Connection& database, const Secrets& secrets,
                                         std::string_view secret);

/// Writes the day of the last use, once a day.
void NoteUseOfAppPassword(Connection& database, int id, Date today);
void NoteUseOfSecretLink(Connection& database, int id, Date today);

}  // namespace orlune
