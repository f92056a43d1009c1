#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>
#include <sqlite3.h>

#include "data/statement.h"
#include "drivers/regional.h"
#include "drivers/sqlite/base_schema.h"
#include "drivers/sqlite/handles.h"
#include "drivers/sqlite/sqlite_driver.h"
#include "support/temporary_folder.h"

namespace orlune::testing {

/// A fresh database file without rows, and a driver that waits for nobody.
class SqliteFixture : public ::testing::Test {
 protected:
  SqliteFixture() { CreateBaseDatabase(file_); }

  std::unique_ptr<Connection> Open() { return driver_.Open(file_); }

  static std::vector<std::string> Column(ResultSet& rows, std::string_view name) {
    std::vector<std::string> texts;
    const int column = rows.Column(name);
    while (rows.Next()) texts.push_back(Text(rows.Get(column)));
    return texts;
  }
  /// The first column named `name` of all rows, numbers as their digits, Null as "Null".
  static std::vector<std::string> Column(Connection& connection, const StatementText& query,
                                         std::string_view name) {
    return Column(*connection.Query(query), name);
  }

  static std::string Text(const Value& value) {
    if (const auto* text = std::get_if<std::string_view>(&value)) return std::string(*text);
    if (const auto* number = std::get_if<std::int64_t>(&value)) return std::to_string(*number);
    return std::holds_alternative<std::monostate>(value) ? "Null" : "other";
  }

  static void AddCalendar(Connection& connection, std::string_view name, std::string_view friendlyName = "") {
    connection.Execute(
        Statement("INSERT INTO Calendars (Name, FriendlyName) VALUES ('{}', '{}')", name, friendlyName));
  }

  /// Another program's view of the file.
  sqlite::DatabaseHandle OpenRaw() const {
    sqlite3* opened = nullptr;
    EXPECT_EQ(sqlite3_open(file_.c_str(), &opened), SQLITE_OK);
    return sqlite::DatabaseHandle(opened);
  }

  TemporaryFolder folder_;
  RegionalSettings regional_ = AmericanSettings();
  const std::string file_ = folder_.Path() / "calendar.db";
  SqliteDriver driver_{regional_, {.BusyTimeout = std::chrono::milliseconds{20}, .MostIdle = 2}};
};

}  // namespace orlune::testing
