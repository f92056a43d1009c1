#include "store/access_keys.h"

#include "base/dates.h"
#include "store/database_access.h"
#include "store/rows.h"

namespace orlune {
namespace {

StoredKey ReadKey(const ResultSet& row, std::string_view number) {
  return {NumberOf(row.Get(row.Column(number))).value_or(0),
          TextIn(row, "Login"),
          "",
          TextIn(row, "Label"),
          TextIn(row, "Digest"),
          DateOf(row.Get(row.Column("Created"))).value_or(Date{}),
          DateOf(row.Get(row.Column("LastUsed")))};
}

StoredKey ReadPassword(const ResultSet& row) {
  return ReadKey(row, "PasswordID");
}

StoredKey ReadLink(const ResultSet& row) {
  StoredKey key = ReadKey(row, "LinkID");
  key.Calendar = TextIn(row, "Calendar");
  return key;
}

template <StoredKey (*read)(const ResultSet& row)>
Query<std::vector<StoredKey>> All(Statement statement) {
  return {std::move(statement), [](ResultSet& rows) {
            std::vector<StoredKey> keys;
            while (rows.Next()) keys.push_back(read(rows));
            return keys;
          }};
}

template <StoredKey (*read)(const ResultSet& row)>
Query<std::optional<StoredKey>> One(Statement statement) {
  return {std::move(statement), [](ResultSet& rows) { return FirstRow(rows, read); }};
}

std::vector<ColumnValue> Columns(const RegionalSettings& regional, const StoredKey& key) {
  return {{"Login", SqlText(key.Login)},
          {"Label", SqlText(key.Label)},
          {"Digest", SqlText(key.Digest)},
          {"Created", SqlText(FormatShortDate(regional, key.Created))}};
}

}  // namespace

Query<std::vector<StoredKey>> StoredAppPasswords(std::string_view loginName) {
  return All<ReadPassword>(
      Statement("SELECT * FROM AppPasswords WHERE (Login = '{}') ORDER BY PasswordID", loginName));
}

Query<std::vector<StoredKey>> StoredSecretLinks(std::string_view loginName) {
  return All<ReadLink>(
      Statement("SELECT * FROM SecretLinks WHERE (Login = '{}') ORDER BY LinkID", loginName));
}

Query<std::optional<StoredKey>> AppPasswordWithDigest(std::string_view digest) {
  return One<ReadPassword>(Statement("SELECT * FROM AppPasswords WHERE (Digest = '{}')", digest));
}

Query<std::optional<StoredKey>> SecretLinkWithDigest(std::string_view digest) {
  return One<ReadLink>(Statement("SELECT * FROM SecretLinks WHERE (Digest = '{}')", digest));
}

void AddAppPassword(Connection& database, const RegionalSettings& regional, const StoredKey& key) {
  database.Execute(BuildSql(SqlMode::kInsert, "AppPasswords", Columns(regional, key)));
}

void AddSecretLink(Connection& database, const RegionalSettings& regional, const StoredKey& key) {
  std::vector<ColumnValue> columns = Columns(regional, key);
  columns.push_back({"Calendar", SqlText(key.Calendar)});
  database.Execute(BuildSql(SqlMode::kInsert, "SecretLinks", columns));
}

void DeleteAppPassword(Connection& database, std::string_view loginName, int id) {
  database.Execute(
      Statement("DELETE FROM AppPasswords WHERE (PasswordID = {}) AND (Login = '{}')", id, loginName));
}

void DeleteSecretLink(Connection& database, std::string_view loginName, int id) {
  database.Execute(
      Statement("DELETE FROM SecretLinks WHERE (LinkID = {}) AND (Login = '{}')", id, loginName));
}

void SetUseOfAppPassword(Connection& database, const RegionalSettings& regional, int id, Date day) {
  database.Execute(Statement("UPDATE AppPasswords SET LastUsed = '{}' WHERE (PasswordID = {})",
                             FormatShortDate(regional, day), id));
}

void SetUseOfSecretLink(Connection& database, const RegionalSettings& regional, int id, Date day) {
  database.Execute(Statement("UPDATE SecretLinks SET LastUsed = '{}' WHERE (LinkID = {})",
                             FormatShortDate(regional, day), id));
}

}  // namespace orlune
