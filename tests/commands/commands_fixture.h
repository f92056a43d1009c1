#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "drivers/engines/database_engines.h"
#include "drivers/regional.h"
#include "store/schema_upgrade.h"
#include "store/sharing_tables.h"
#include "store/statement.h"
#include "support/test_database.h"

namespace orlune::testing {

/// Databases for the operator's commands and for the pages.
class CommandsFixture : public ::testing::Test {
 protected:
  NamedDatabase Named(const DatabasePlace& place) {
    return engines_.Named(DatabaseAddress::Parse(place.Path()));
  }
  std::unique_ptr<DatabaseMaintenance> OpenToRead(const DatabasePlace& place) {
    const NamedDatabase named = Named(place);
    return named.Engine.OpenToRead(named.Address);
  }
  std::unique_ptr<DatabaseMaintenance> OpenToFill(const DatabasePlace& place) {
    const NamedDatabase named = Named(place);
    return named.Engine.OpenToFill(named.Address);
  }

  /// Runs a statement of the dialect.
  void Run(const DatabasePlace& place, const StatementText& statement) {
    place.MakeDriver(regional_)->Open(place.Path())->Execute(statement);
  }

  /// Creates a valid database without events: 'admin', 'default', and 'Ben' of the group 'team'.
  void Make(const DatabasePlace& place) {
    place.CreateTables();
    const auto driver = place.MakeDriver(regional_);
    const auto database = driver->Open(place.Path());
    database->Begin();
    database->Execute(
        Statement("INSERT INTO StyleSheets (SheetName, SheetFile) VALUES ('Default', 'default.css')"));
    for (const char* group : {"default", "team"})
      database->Execute(Statement("INSERT INTO Calendars (Name, IsGroup) VALUES ('{}', yes)", group));
    database->Execute(Statement("INSERT INTO Calendars (Name, Password) VALUES ('admin', 'x')"));
    database->Execute(
        Statement("INSERT INTO Calendars (Name, MemberOfGroups) VALUES ('Ben', 'default, team')"));
    database->Commit();
  }
  void MakeCurrent(const DatabasePlace& place) {
    Make(place);
    UpgradeSchema(*place.MakeDriver(regional_)->Open(place.Path()));
  }
  /// With the tables of shared calendars.
  void MakeShared(const DatabasePlace& place) {
    MakeCurrent(place);
    CreateSharingTables(*place.MakeDriver(regional_)->Open(place.Path()));
  }

  RegionalSettings regional_ = AmericanSettings();
  DatabaseEngines engines_{regional_};
};

}  // namespace orlune::testing
