#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace orlune::sqlite {

struct CloseDatabase {
  void operator()(sqlite3* database) const noexcept;
};
using DatabaseHandle = std::unique_ptr<sqlite3, CloseDatabase>;

struct FinalizeStatement {
  void operator()(sqlite3_stmt* statement) const noexcept;
};
using StatementHandle = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

/// Opens a calendar: durable commits, Unicode text comparison, a large page cache. Throws DatabaseError when
/// the file is missing, unreadable, something else or an incomplete copy; it is then left unchanged.
DatabaseHandle OpenExisting(const std::filesystem::path& file, std::chrono::milliseconds busyTimeout);
/// The same, incomplete copies included.
DatabaseHandle OpenToFill(const std::filesystem::path& file, std::chrono::milliseconds busyTimeout);
/// Opens any SQLite file without ever changing it. Throws DatabaseError when it is missing or unreadable.
DatabaseHandle OpenReadOnly(const std::filesystem::path& file, std::chrono::milliseconds busyTimeout);
/// Creates an empty database, which only its owner may read. Throws DatabaseError, as when `file` exists.
DatabaseHandle CreateEmpty(const std::filesystem::path& file);

/// Throws DatabaseError unless SQLite's `result` is success; DatabaseUnavailable, as everything below, when
/// another writer did not end in time.
void Check(sqlite3* database, int result);
/// Throws DatabaseError.
StatementHandle Prepare(sqlite3* database, std::string_view sql);
/// Moves to the next row; false past the last one. Throws DatabaseError, which names the statement without
/// its parameters; the statement is then reset.
bool Step(sqlite3_stmt* statement);
/// Runs a statement without rows from start to end. Throws DatabaseError.
void Run(sqlite3_stmt* statement);
/// Runs statements without rows. Throws DatabaseError.
void Run(sqlite3* database, const char* sql);
/// The current row's text.
std::string_view ColumnText(sqlite3_stmt* statement, int column);

}  // namespace orlune::sqlite
