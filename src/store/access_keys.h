#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/regional_settings.h"
#include "platform/database.h"
#include "store/query.h"

namespace orlune {

// The tables AppPasswords and SecretLinks. A key is stored as a digest, which is all that can be looked up.
// Functions that write throw DatabaseError.

/// A row of either table.
struct StoredKey {
  int Id = 0;
  std::string Login;
  std::string Calendar{};  ///< of a link
  std::string Label;
  std::string Digest;
  Date Created;
  std::optional<Date> LastUsed{};
};

/// By their age.
Query<std::vector<StoredKey>> StoredAppPasswords(std::string_view loginName);
Query<std::vector<StoredKey>> StoredSecretLinks(std::string_view loginName);
Query<std::optional<StoredKey>> AppPasswordWithDigest(std::string_view digest);
Query<std::optional<StoredKey>> SecretLinkWithDigest(std::string_view digest);

void AddAppPassword(Connection& database, const RegionalSettings& regional, const StoredKey& key);
void AddSecretLink(Connection& database, const RegionalSettings& regional, const StoredKey& key);
void DeleteAppPassword(Connection& database, std::string_view loginName, int id);
void DeleteSecretLink(Connection& database, std::string_view loginName, int id);
void SetUseOfAppPassword(Connection& database, const RegionalSettings& regional, int id, Date day);
void SetUseOfSecretLink(Connection& database, const RegionalSettings& regional, int id, Date day);

}  // namespace orlune
