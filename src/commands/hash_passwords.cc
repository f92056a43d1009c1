#include "commands/hash_passwords.h"

#include <string>
#include <vector>

#include "store/rows.h"
#include "store/statement.h"

namespace orlune {
namespace {

struct StoredPassword {
  int CalendarId;
  std::string Password;
};

std::vector<StoredPassword> ReadPasswords(Connection& database) {
  const auto rows =
      database.Query(Statement("SELECT CalendarID, Password FROM Calendars WHERE IsGroup = no"));
  const int id = rows->Column("CalendarID");
  const int password = rows->Column("Password");
  std::vector<StoredPassword> stored;
  while (rows->Next())
    stored.push_back({NumberOf(rows->Get(id)).value_or(0), std::string(TextOf(rows->Get(password)))});
  return stored;
}

}  // namespace

HashedPasswords HashPasswords(Connection& database, Passwords& passwords) {
  HashedPasswords counts;
  for (const auto& [id, stored] : ReadPasswords(database)) {
    if (stored.empty()) {
      ++counts.Without;
    } else if (passwords.IsHash(stored)) {
      ++counts.Before;
    } else {
      // Its user may have changed it meanwhile.
      database.Execute(
          Statement("UPDATE Calendars SET Password = '{}' WHERE (CalendarID = {}) AND (Password = '{}')",
                    passwords.Hash(stored), id, stored));
      ++counts.Now;
    }
  }
  return counts;
}

}  // namespace orlune
