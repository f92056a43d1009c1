#include "sessions/session_table.h"

#include <algorithm>
#include <vector>

#include "store/database_access.h"
#include "store/field.h"
#include "store/sessions_table.h"
#include "store/statement.h"
#include "store/transaction.h"

namespace orlune {
namespace {

std::int64_t NumberAt(const ResultSet& rows, std::string_view column) {
  const Value value = rows.Get(rows.Column(column));
  const auto* number = std::get_if<std::int64_t>(&value);
  return number == nullptr ? 0 : *number;
}

/// The rows that count against a limit.
SqlLiteral Condition(SessionKind kind) {
  return kind == SessionKind::kAnonymous ? SqlLiteral("Login Is Null") : SqlLiteral("Login Is Not Null");
}

/// When the 1000th of the rows in order of expiry expires, or the last of fewer.
std::int64_t LastOfThousand(Connection& connection, SessionKind kind) {
  const auto rows = connection.Query(
      Statement("SELECT TOP 1000 Expires FROM Sessions WHERE {} ORDER BY Expires", Condition(kind)));
  std::int64_t last = 0;
  while (rows->Next()) last = NumberAt(*rows, "Expires");
  return last;
}

std::vector<SessionRow> ReadRows(Connection& connection, const Statement& condition) {
  const auto found = connection.Query(
      Statement("SELECT SessionKey, SessionValues, Version, Expires FROM Sessions WHERE {}", condition));
  std::vector<SessionRow> rows;
  while (found->Next()) {
    rows.push_back({std::string(TextOf(found->Get(found->Column("SessionKey")))),
                    std::string(TextOf(found->Get(found->Column("SessionValues")))),
                    NumberAt(*found, "Version"), NumberAt(*found, "Expires")});
  }
  return rows;
}

Statement Insertion(const SessionRow& row) {
  return Statement(
      "INSERT INTO Sessions (SessionKey, SessionValues, Version, Expires, Login) "
      "VALUES ('{}', '{}', {}, {}, {})",
      row.Key, row.Values, row.Version, row.ExpiresAt, SqlText(row.Login));
}

Statement Removal(const std::string& key) {
  return Statement("DELETE FROM Sessions WHERE SessionKey = '{}'", key);
}

}  // namespace

SessionTable::SessionTable(const SessionDatabase& database)
    : connection_(database.Driver->Open(database.Path)) {
  CreateSessionsTable(*connection_);
}

std::optional<SessionRow> SessionTable::FindRunning(std::span<const std::string> keys, std::int64_t now) {
  std::vector<SessionRow> rows =
      ReadRows(*connection_, Statement("(SessionKey IN ({})) AND (Expires > {})", QuotedList(keys), now));
  for (const std::string& key : keys) {
    const auto row = std::find_if(rows.begin(), rows.end(),
                                  [&key](const SessionRow& candidate) { return candidate.Key == key; });
    if (row != rows.end()) return std::move(*row);
  }
  return std::nullopt;
}

std::optional<SessionRow> SessionTable::Find(const std::string& key) {
  std::vector<SessionRow> rows = ReadRows(*connection_, Statement("SessionKey = '{}'", key));
  if (rows.empty()) return std::nullopt;
  return std::move(rows.front());
}

void SessionTable::Insert(const SessionRow& row) {
  connection_->Execute(Insertion(row));
}

void SessionTable::Replace(const std::string& endedKey, const SessionRow& row) {
  Transaction transaction(*connection_);
  connection_->Execute(Removal(endedKey));
  connection_->Execute(Insertion(row));
  transaction.Commit();
}

void SessionTable::UpdateValues(const SessionRow& row, std::int64_t replaced) {
  connection_->Execute(
      Statement("UPDATE Sessions SET SessionValues = '{}', Version = {} "
                "WHERE (SessionKey = '{}') AND (Version = {})",
                row.Values, row.Version, row.Key, replaced));
}

void SessionTable::Prolong(const std::unordered_map<std::string, std::int64_t>& expiries) {
  Transaction transaction(*connection_);
  for (const auto& [key, expiresAt] : expiries)
    connection_->Execute(
        Statement("UPDATE Sessions SET Expires = {} WHERE SessionKey = '{}'", expiresAt, key));
  transaction.Commit();
}

void SessionTable::Remove(const std::string& key) {
  connection_->Execute(Removal(key));
}

void SessionTable::MakeRoomFor(const SessionRow& row, std::size_t most) {
  std::vector<std::string> excess;
  {
    const auto rows = connection_->Query(
        Statement("SELECT SessionKey FROM Sessions WHERE Login = '{}' ORDER BY Expires DESC", row.Login));
    for (std::size_t number = 1; rows->Next(); ++number) {
      if (number >= most) excess.emplace_back(TextOf(rows->Get(0)));
    }
  }
  for (const std::string& key : excess) Remove(key);
}

std::int64_t SessionTable::Count(SessionKind kind) {
  const auto rows = connection_->Query(
      Statement("SELECT Count(SessionKey) AS Kept FROM Sessions WHERE {}", Condition(kind)));
  return rows->Next() ? NumberAt(*rows, "Kept") : 0;
}

void SessionTable::RemoveExpired(std::int64_t now) {
  connection_->Execute(Statement("DELETE FROM Sessions WHERE Expires <= {}", now));
}

void SessionTable::RemoveThousand(SessionKind kind) {
  connection_->Execute(Statement("DELETE FROM Sessions WHERE {} AND (Expires <= {})", Condition(kind),
                                 LastOfThousand(*connection_, kind)));
}

}  // namespace orlune
