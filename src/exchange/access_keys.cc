#include "exchange/access_keys.h"

#include "base/text.h"
#include "store/access_keys.h"

namespace orlune {
namespace {

std::vector<AccessKey> Shown(std::vector<StoredKey> stored) {
  std::vector<AccessKey> keys;
  keys.reserve(stored.size());
  for (StoredKey& key : stored)
    keys.push_back({key.Id, std::move(key.Label), std::move(key.Calendar), key.Created, key.LastUsed});
  return keys;
}

}  // namespace

std::vector<AccessKey> AppPasswordsOf(Connection& database, std::string_view loginName) {
  return Shown(Ask(database, StoredAppPasswords(loginName)));
}

std::vector<AccessKey> SecretLinksOf(Connection& database, std::string_view loginName) {
  return Shown(Ask(database, StoredSecretLinks(loginName)));
}

std::optional<std::string> MakeAppPassword(Connection& database, const KeyTools& tools,
                                           std::string_view loginName, std::string_view label) {
  if (Ask(database, StoredAppPasswords(loginName)).size() >= kMostKeysOfUser) return std::nullopt;
  std::string secret = tools.Secrets.MakeSecret();
  AddAppPassword(
      database, tools.Regional,
      {0, std::string(loginName), "", std::string(label), tools.Secrets.Digest(secret), tools.Today});
  return secret;
}

std::optional<std::string> MakeSecretLink(Connection& database, const KeyTools& tools,
                                          std::string_view loginName, std::string_view calendar,
                                          std::string_view label) {
  if (Ask(database, StoredSecretLinks(loginName)).size() >= kMostKeysOfUser) return std::nullopt;
  std::string secret = tools.Secrets.MakeSecret();
  AddSecretLink(database, tools.Regional,
                {0, std::string(loginName), std::string(calendar), std::string(label),
                 tools.Secrets.Digest(secret), tools.Today});
  return secret;
}

void RevokeAppPassword(Connection& database, std::string_view loginName, int id) {
  DeleteAppPassword(database, loginName, id);
}

void RevokeSecretLink(Connection& database, std::string_view loginName, int id) {
  DeleteSecretLink(database, loginName, id);
}

std::optional<FoundPassword> FindAppPassword(Connection& database, const Secrets& secrets,
                                             std::string_view loginName, std::string_view password) {
  const auto key = Ask(database, AppPasswordWithDigest(secrets.Digest(password)));
  if (!key || !EqualIgnoringCase(key->Login, loginName)) return std::nullopt;
  return FoundPassword{key->Id, key->LastUsed};
}

std::optional<FeedTarget> FindSecretLink(Connection& database, const Secrets& secrets,
                                         std::string_view secret) {
  const auto key = Ask(database, SecretLinkWithDigest(secrets.Digest(secret)));
  if (!key) return std::nullopt;
  return FeedTarget{key->Id, key->Login, key->Calendar, key->LastUsed};
}

void NoteUseOfAppPassword(Connection& database, const KeyTools& tools, const FoundPassword& password) {
  if (password.LastUsed != tools.Today)
    SetUseOfAppPassword(database, tools.Regional, password.Id, tools.Today);
}

void NoteUseOfSecretLink(Connection& database, const KeyTools& tools, const FeedTarget& link) {
  if (link.LastUsed != tools.Today) SetUseOfSecretLink(database, tools.Regional, link.LinkId, tools.Today);
}

}  // namespace orlune
