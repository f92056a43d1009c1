#include "sessions/database_session_store.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include <sodium.h>

#include "base/url_encoding.h"
#include "sessions/hex_text.h"
#include "sessions/session_identifier.h"

namespace orlune {
namespace {

constexpr int kMaxAttempts = 100;

std::int64_t NewVersion() {
  std::uint64_t version = 0;
  randombytes_buf(&version, sizeof version);
  return static_cast<std::int64_t>(version >> 2U);
}

}  // namespace

DatabaseSessionStore::DatabaseSessionStore(SessionDatabase database, SessionProlonger& prolonger,
                                           std::string pagePath, std::chrono::seconds lifetime,
                                           TimeSource now)
    : database_(std::move(database)),
      prolonger_(prolonger),
      pagePath_(std::move(pagePath)),
      lifetime_(lifetime),
      now_(std::move(now)) {}

std::optional<KeptSession> DatabaseSessionStore::Find(std::span<const std::string_view> candidates) {
  std::vector<std::string> keys;
  for (const std::string_view id : candidates) keys.push_back(KeyOf(id));
  const std::int64_t now = Now();
  SessionTable table(database_);
  std::optional<SessionRow> row = table.FindRunning(keys, now);
  if (!row) return std::nullopt;
  const std::int64_t fullLifetime = now + lifetime_.count();
  if (fullLifetime - row->ExpiresAt > lifetime_.count() / 10) prolonger_.Prolong(row->Key, fullLifetime);
  const auto position = std::find(keys.begin(), keys.end(), row->Key) - keys.begin();
  return KeptSession{std::string(candidates[static_cast<std::size_t>(position)]), DecodeQuery(row->Values),
                     row->Version};
}

std::string DatabaseSessionStore::Start(const NamedTexts& values, std::string_view endedId) {
  std::string id = NewSessionIdentifier();
  const SessionRow row{KeyOf(id), EncodeQuery(values), NewVersion(), Now() + lifetime_.count(),
                       std::string(values.Find(kLoginKey))};
  SessionTable table(database_);
  if (!row.Login.empty()) table.MakeRoomFor(row, kMaxSessionsOfLogin);
  if (endedId.empty()) {
    table.Insert(row);
  } else {
    table.Replace(KeyOf(endedId), row);
  }
  return id;
}

void DatabaseSessionStore::Change(const KeptSession& found, const NamedTexts& changes) {
  SessionRow row{KeyOf(found.Id), {}, found.Version};
  NamedTexts values = found.Values;
  SessionTable table(database_);
  for (int attempt = 0; attempt < kMaxAttempts; ++attempt) {
    ApplyChanges(changes, values);
    row.Values = EncodeQuery(values);
    const std::int64_t replaced = std::exchange(row.Version, NewVersion());
    table.UpdateValues(row, replaced);
    const std::optional<SessionRow> stored = table.Find(row.Key);
    if (!stored || stored->Version == row.Version) return;
    row.Version = stored->Version;
    values = DecodeQuery(stored->Values);
  }
  throw DatabaseError("could not change a session of " + pagePath_ + ": other requests changed it during " +
                      std::to_string(kMaxAttempts) + " attempts");
}

void DatabaseSessionStore::End(std::string_view id) {
  SessionTable(database_).Remove(KeyOf(id));
}

std::string DatabaseSessionStore::KeyOf(std::string_view id) const {
  const std::string text = std::string(pagePath_).append(1, '\0').append(id);
  std::array<unsigned char, crypto_generichash_BYTES> hash;
  crypto_generichash(hash.data(), hash.size(), reinterpret_cast<const unsigned char*>(text.data()),
                     text.size(), nullptr, 0);
  return HexText(hash);
}

std::int64_t DatabaseSessionStore::Now() const {
  return std::chrono::floor<std::chrono::seconds>(now_()).time_since_epoch().count();
}

}  // namespace orlune
