#pragma once

#include <memory>
#include <string>

#include "drivers/schema/database_maintenance.h"
#include "platform/database.h"

namespace orlune {

/// How the operator's commands reach the databases of one engine. `address` is what the operator named: a
/// file or a URL. What it returns must not outlive it. Everything throws DatabaseError, whose text shows no
/// password.
class DatabaseEngine {
 public:
  virtual ~DatabaseEngine() = default;

  /// Opens a database that exists; nothing of it ever changes.
  virtual std::unique_ptr<DatabaseMaintenance> OpenToRead(const std::string& address) = 0;
  /// Opens a database to write rows to it. One that is missing is made with the base tables, unseen by other
  /// accounts of the machine; so are the tables where an existing one has none of ours.
  virtual std::unique_ptr<DatabaseMaintenance> OpenToFill(const std::string& address) = 0;
  /// A connection as the pages have it.
  virtual std::unique_ptr<Connection> Connect(const std::string& address) = 0;
};

/// A database as an operator names it: a file or a URL, and the engine that it leads to.
struct NamedDatabase {
  DatabaseEngine& Engine;
  std::string Address;
};

}  // namespace orlune
