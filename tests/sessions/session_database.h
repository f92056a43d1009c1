#pragma once

#include <atomic>
#include <memory>
#include <string>

#include "drivers/icu/icu_regional_settings.h"
#include "sessions/session_table.h"
#include "support/test_database.h"

namespace orlune::testing {

/// A driver that opens nothing while `IsAway`.
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

/// A fresh database of the engine under test.
class SessionTestDatabase {
 public:
  SessionTestDatabase() { place_.CreateTables(); }

  /// A driver with a cache of its own, as another server has it.
  std::unique_ptr<BreakableDriver> NewDriver() const {
    return std::make_unique<BreakableDriver>(place_.MakeDriver(regional_));
  }
  SessionDatabase OpenedBy(DatabaseDriver& driver) const { return {&driver, place_.Path()}; }

 private:
  DatabasePlace place_;
  RegionalSettings regional_ = LoadRegionalSettings("en_US");
};

}  // namespace orlune::testing
