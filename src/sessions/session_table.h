#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>

#include "platform/database.h"

namespace orlune {

/// The database of one hosting page, and the driver that opens it.
struct SessionDatabase {
  DatabaseDriver* Driver;
  std::string Path;
};

struct SessionRow {
  std::string Key;             ///< 64 hexadecimal digits
  std::string Values;          ///< as `EncodeQuery` writes them
  std::int64_t Version = 0;    ///< another number after each change of the values
  std::int64_t ExpiresAt = 0;  ///< in seconds since 1970, UTC
  std::string Login{};         ///< whose it is; "" for nobody's
};

/// Sessions of users, and of visitors who did not log in.
enum class SessionKind { kUsers, kAnonymous };

/// The table `Sessions` of a database, over a connection of its own. Creates the table when it is missing.
/// Used by one thread. Everything throws DatabaseError.
class SessionTable {
 public:
  explicit SessionTable(const SessionDatabase& database);

  /// The row of the first of the keys that has one expiring after `now`. There is at least one key.
  std::optional<SessionRow> FindRunning(std::span<const std::string> keys, std::int64_t now);
  /// The row, expired or not.
  std::optional<SessionRow> Find(const std::string& key);

  void Insert(const SessionRow& row);
  /// Removes the row of `endedKey` and inserts another one, in one transaction.
  void Replace(const std::string& endedKey, const SessionRow& row);
  /// Updates values and version of the row if it still has the version `replaced`.
  void UpdateValues(const SessionRow& row, std::int64_t replaced);
  /// Sets the moments of expiry, by key, in one transaction.
  void Prolong(const std::unordered_map<std::string, std::int64_t>& expiries);
  void Remove(const std::string& key);

  /// Removes the least recently used sessions of the login of `row`, which is not inserted yet, so that it
  /// has at most `most` with it.
  void MakeRoomFor(const SessionRow& row, std::size_t most);
  std::int64_t Count(SessionKind kind);
  /// Removes the rows that expire at `now` or before.
  void RemoveExpired(std::int64_t now);
  /// Removes the 1000 rows of a kind that expire first, and those that expire in the same second as the last
  /// of them.
  void RemoveThousand(SessionKind kind);

 private:
  std::unique_ptr<Connection> connection_;
};

}  // namespace orlune
