#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "base/regional_settings.h"
#include "platform/database.h"
#include "support/temporary_folder.h"

namespace orlune::testing {

enum class Engine { kSqlite, kPostgresql };

/// The engine that this run of the tests is about: what the variable ORLUNE_TEST_ENGINE names, "sqlite" when
/// it is not set.
Engine EngineUnderTest();

/// An empty place for one database, of the engine under test unless told otherwise. On PostgreSQL it is a
/// schema of the database that the variable ORLUNE_TEST_POSTGRESQL names. Goes with the object.
class DatabasePlace {
 public:
  explicit DatabasePlace(Engine engine = EngineUnderTest());
  ~DatabasePlace();
  DatabasePlace(const DatabasePlace&) = delete;
  DatabasePlace& operator=(const DatabasePlace&) = delete;

  Engine Kind() const { return engine_; }
  /// The path, as a hosting page's DBPath has it.
  const std::string& Path() const { return path_; }
  /// Makes the tables that every database starts with.
  void CreateTables() const;
  /// Removes the database.
  void Clear() const;
  /// Whether there is nothing of a database.
  bool IsEmpty() const;
  /// A driver for the place, which waits for another writer only so long.
  std::unique_ptr<DatabaseDriver> MakeDriver(const RegionalSettings& regional,
                                             std::chrono::milliseconds patience = std::chrono::milliseconds{
                                                 5000}) const;
  /// What another program does to the database, in the engine's own SQL; the first field of the first row,
  /// "" when there is none.
  std::string RunNative(const std::string& sql) const;

 private:
  const Engine engine_;
  TemporaryFolder folder_;
  std::string schema_;
  std::string path_;
};

}  // namespace orlune::testing
