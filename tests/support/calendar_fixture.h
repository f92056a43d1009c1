#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "component/orlune.h"
#include "drivers/passwords/argon2_passwords.h"
#include "store/statement.h"
#include "support/english_only.h"
#include "support/fake_host.h"
#include "support/fake_login_guard.h"
#include "support/temporary_folder.h"
#include "support/test_database.h"

namespace orlune::testing {

/// A stopped clock: Monday, 15 March 2004, 10:30.
class FixedClock : public Clock {
 public:
  DateTime Now() const override {
    return {std::chrono::year{2004} / 3 / 15, std::chrono::hours{10} + std::chrono::minutes{30}};
  }
};

/// The component with a new database in the region en_US. The database has the users 'admin',
/// 'anna' (password "secret"; in the groups sales and staff; administers sales) and 'ben' (no password;
/// hidden), and the groups 'default', 'sales' and 'staff'.
class CalendarFixture : public ::testing::Test {
 protected:
  CalendarFixture();

  /// Sends a request such as "p=c&dm=week"; values are not decoded.
  const Answer& Get(const std::string& query = "") { return Send(query, {}); }
  const Answer& Post(const std::string& query, FakeHost::Fields form) { return Send(query, std::move(form)); }
  void LogIn(const std::string& name, const std::string& password);

  /// Runs a statement of the dialect.
  void Run(const Statement& statement);
  /// The first field of the first row as text, or "(none)".
  std::string Read(const Statement& query);
  /// The rows of a query, each with its fields as texts joined with "|".
  std::vector<std::string> ReadRows(const Statement& query, const std::vector<std::string>& columns);
  /// Adds an event of `owner` and returns its number. Columns and values are pieces of an INSERT.
  int AddEvent(std::string_view owner, std::string_view name, SqlLiteral columns, SqlLiteral values);

  TemporaryFolder folder_;
  RegionalSettings regional_;
  DatabasePlace place_;
  std::unique_ptr<DatabaseDriver> ownedDriver_;
  DatabaseDriver& driver_;
  FixedClock clock_;
  OneLanguage languages_{regional_};
  NoLanguagePacks languagePacks_;
  /// As cheap as the algorithm can be.
  Argon2Passwords passwords_{4, {.MemoryBytes = 8192, .Passes = 1}};
  FakeLoginGuard logins_;
  Surroundings surroundings_;
  FakeHost host_;
  std::string databasePath_;
  /// Sets further properties of the component.
  std::function<void(Orlune&)> configure_ = [](Orlune&) {};

 private:
  const Answer& Send(const std::string& query, FakeHost::Fields form);
};

}  // namespace orlune::testing
