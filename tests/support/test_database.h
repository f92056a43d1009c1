#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "base/regional_settings.h"
#include "platform/database.h"
#include "support/temporary_folder.h"

namespace orlune::testing {

enum class Engine { kSqlite, kPostgresql };

/// The engine under test, from the environment variable ORLUNE_TEST_ENGINE; "sqlite" when it is not set.
Engine EngineUnderTest();

/// A place for one database, by default of the engine under test: a file in a temporary folder, or a schema
/// of the database in the environment variable ORLUNE_TEST_POSTGRESQL. Removed with the object.
class DatabasePlace {
 public:
  explicit DatabasePlace(Engine engine = EngineUnderTest());
  ~DatabasePlace();
  DatabasePlace(const DatabasePlace&) = delete;
  DatabasePlace& operator=(const DatabasePlace&) = delete;

  Engine Kind() const { return engine_; }
  /// The value for DBPath of a hosting page.
  const std::string& Path() const { return path_; }
  /// Creates the base tables.
  void CreateTables() const;
  /// Removes the database.
  void Clear() const;
  /// Whether there is no database, not even an incomplete one.
  bool IsEmpty() const;
  /// A driver for the database with this lock timeout.
  std::unique_ptr<DatabaseDriver> MakeDriver(const RegionalSettings& regional,
                                             std::chrono::milliseconds patience = std::chrono::milliseconds{
                                                 5000}) const;
  /// Runs the engine's own SQL, as another program does. Returns the first field of the first row; "" when
  /// there is none.
  std::string RunNative(const std::string& sql) const;

 private:
  const Engine engine_;
  TemporaryFolder folder_;
  std::string schema_;
  std::string path_;
};

}  // namespace orlune::testing
