#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "drivers/regional.h"
#include "store/statement.h"
#include "support/test_database.h"

namespace orlune::testing {

/// A new database without rows, and a driver with a short lock timeout.
class DatabaseFixture : public ::testing::Test {
 protected:
  explicit DatabaseFixture(Engine engine = EngineUnderTest()) : place_(engine) { place_.CreateTables(); }

  std::unique_ptr<Connection> Open() { return driver_->Open(place_.Path()); }

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

  using Texts = std::vector<std::string>;
  static Texts Names(Connection& connection) {
    return Column(connection, Statement("SELECT Name FROM Calendars"), "Name");
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

  RegionalSettings regional_ = AmericanSettings();
  const DatabasePlace place_;
  const std::unique_ptr<DatabaseDriver> driver_ = place_.MakeDriver(regional_, std::chrono::milliseconds{50});
};

}  // namespace orlune::testing
