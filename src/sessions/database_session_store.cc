#include "sessions/database_session_store.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include <sodium.h>

#include "base/url_encoding.h"
#include "sessions/session_identifier.h"

namespace orlune {
namespace {

constexpr int kMostAttempts = 100;

std::string KeyOf(std::string_view pagePath, std::string_view id) {
  const std::string text = std::string(pagePath).append(1, '\0').append(id);
  std::array<unsigned char, crypto_generichash_BYTES> hash;
  crypto_generichash(hash.data(), hash.size(), reinterpret_cast<const unsigned char*>(text.data()),
                     text.size(), nullptr, 0);
  std::string key(2 * hash.size() + 1, '\0');
  sodium_bin2hex(key.data(), key.size(), hash.data(), hash.size());
  key.pop_back();
  return key;
}

std::int64_t NewVersion() {
  std::uint64_t version = 0;
  randombytes_buf(&version, sizeof version);
  return static_cast<std::int64_t>(version >> 2U);
}

}  // namespace

DatabaseSessionStore::DatabaseSessionStore(SessionDatabases databases, std::chrono::seconds lifetime,
                                           TimeSource now)
    : databases_(std::move(databases)), lifetime_(lifetime), now_(std::move(now)) {}

std::optional<KeptSession> DatabaseSessionStore::Find(std::string_view pagePath,
                                                      std::span<const std::string_view> candidates) {
  std::vector<std::string> keys;
  for (const std::string_view id : candidates) keys.push_back(KeyOf(pagePath, id));
  const std::int64_t now = Now();
  SessionTable table = Open(pagePath);
  std::optional<SessionRow> row = table.FindRunning(keys, now);
  if (!row) return std::nullopt;
  const std::int64_t fullLifetime = now + lifetime_.count();
  if (fullLifetime - row->ExpiresAt > lifetime_.count() / 10) {
    row->ExpiresAt = fullLifetime;
    table.TryProlong(*row);
  }
  const auto position = std::find(keys.begin(), keys.end(), row->Key) - keys.begin();
  return KeptSession{std::string(candidates[static_cast<std::size_t>(position)]), DecodeQuery(row->Values),
                     row->Version};
}

std::string DatabaseSessionStore::Start(std::string_view pagePath, const NamedTexts& values,
                                        std::string_view endedId) {
  std::string id = NewSessionIdentifier();
  const SessionRow row{KeyOf(pagePath, id), EncodeQuery(values), NewVersion(), Now() + lifetime_.count()};
  SessionTable table = Open(pagePath);
  if (endedId.empty()) {
    table.Insert(row);
  } else {
    table.Replace(KeyOf(pagePath, endedId), row);
  }
  return id;
}

void DatabaseSessionStore::Change(std::string_view pagePath, const KeptSession& found,
                                  const NamedTexts& changes) {
  SessionRow row{KeyOf(pagePath, found.Id), {}, found.Version};
  NamedTexts values = found.Values;
  SessionTable table = Open(pagePath);
  for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
    ApplyChanges(changes, values);
    row.Values = EncodeQuery(values);
    const std::int64_t replaced = std::exchange(row.Version, NewVersion());
    table.UpdateValues(row, replaced);
    const std::optional<SessionRow> stored = table.Find(row.Key);
    if (!stored || stored->Version == row.Version) return;
    row.Version = stored->Version;
    values = DecodeQuery(stored->Values);
  }
  throw DatabaseError("a session changes too often to be changed");
}

void DatabaseSessionStore::End(std::string_view pagePath, std::string_view id) {
  Open(pagePath).Remove(KeyOf(pagePath, id));
}

SessionTable DatabaseSessionStore::Open(std::string_view pagePath) const {
  return SessionTable(databases_.find(pagePath)->second);
}

std::int64_t DatabaseSessionStore::Now() const {
  return std::chrono::floor<std::chrono::seconds>(now_()).time_since_epoch().count();
}

}  // namespace orlune
