#pragma once

#include <functional>
#include <memory>

#include "drivers/engines/database_address.h"
#include "drivers/schema/database_maintenance.h"
#include "platform/database.h"

namespace orlune {

/// The databases of one engine. Outlives what it returns. Everything throws DatabaseError, whose text shows
/// no password.
class DatabaseEngine {
 public:
  virtual ~DatabaseEngine() = default;

  /// A connection as the pages have it, from a pool.
  virtual std::unique_ptr<Connection> Connect(const DatabaseAddress& address,
                                              Access access = Access::kReadAndWrite) = 0;

  /// Creates a database with the base tables and lets `fill` write to it. A file must not exist, and only its
  /// owner may read it; a database on a server exists and has none of the tables. Leaves nothing behind when
  /// it fails.
  virtual void Create(const DatabaseAddress& address, const std::function<void(Connection&)>& fill) = 0;

  /// Opens an existing database, which never changes.
  virtual std::unique_ptr<DatabaseMaintenance> OpenToRead(const DatabaseAddress& address) = 0;
  /// Opens a database to write rows to it; one that is missing is created with the base tables.
  virtual std::unique_ptr<DatabaseMaintenance> OpenToFill(const DatabaseAddress& address) = 0;
};

/// A database, and the engine that its address selects.
struct NamedDatabase {
  DatabaseEngine& Engine;
  DatabaseAddress Address;
};

}  // namespace orlune
