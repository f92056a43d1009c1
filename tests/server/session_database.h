#pragma once

#include <atomic>
#include <memory>
#include <string>

#include "drivers/icu/icu_regional_settings.h"
#include "drivers/sqlite/base_schema.h"
#include "drivers/sqlite/sqlite_driver.h"
#include "server/session_table.h"
#include "support/temporary_folder.h"

namespace orlune::testing {

/// A driver whose databases can be taken away.
class BreakableDriver : public DatabaseDriver {
 public:
  explicit BreakableDriver(std::unique_ptr<DatabaseDriver> inner) : inner_(std::move(inner)) {}
  std::unique_ptr<Connection> Open(const std::string& path) override {
    if (IsAway) throw DatabaseError("away");
    return inner_->Open(path);
  }

  std::atomic<bool> IsAway = false;

 private:
  std::unique_ptr<DatabaseDriver> inner_;
};

/// A fresh database, and a driver for it.
class SessionTestDatabase {
 public:
  SessionTestDatabase() { CreateBaseDatabase(path_); }

  /// As another server has it, with nothing remembered about the database.
  std::unique_ptr<BreakableDriver> NewDriver() const {
    return std::make_unique<BreakableDriver>(std::make_unique<SqliteDriver>(regional_));
  }
  SessionDatabase OpenedBy(DatabaseDriver& driver) const { return {&driver, path_}; }

 private:
  TemporaryFolder folder_;
  RegionalSettings regional_ = LoadRegionalSettings("en_US");
  std::string path_ = folder_.Path() / "calendar.db";
};

}  // namespace orlune::testing
