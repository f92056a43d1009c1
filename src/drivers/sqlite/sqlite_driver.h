#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "base/regional_settings.h"
#include "platform/database.h"

namespace orlune {

namespace sqlite {
class Pool;
}

struct SqliteOptions {
  std::chrono::milliseconds BusyTimeout{10'000};   ///< how long a transaction waits for other writers
  std::size_t MostIdle = 32;                       ///< databases kept open for each file
  std::size_t KeptBytes = std::size_t{64} << 20U;  ///< results kept for each file
  std::chrono::milliseconds IdentityCheck{100};    ///< how long a file that replaced another may go unnoticed
};

/// Keeps calendars in SQLite files. What was committed survives the end of the process and loss of power.
/// Texts compare ignoring case by Unicode's rules, under the name NOCASE: other SQLite programs can read the
/// files, but must not write texts beyond ASCII to them.
class SqliteDriver : public DatabaseDriver {
 public:
  /// Dates in statements are read as `regional` writes them; it has to outlive the driver and its
  /// connections.
  explicit SqliteDriver(const RegionalSettings& regional, SqliteOptions options = {});
  ~SqliteDriver() override;

  /// Never creates a file, and refuses those that are not this system's.
  std::unique_ptr<Connection> Open(const std::string& path) override;
  std::unique_ptr<Connection> Open(const std::string& path, Access access);

 private:
  /// Distinguishes a file from another one that took its name.
  struct FileIdentity {
    std::uint64_t Device = 0;
    std::uint64_t Number = 0;
    friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
  };
  struct OpenFile {
    FileIdentity Identity;
    std::shared_ptr<sqlite::Pool> Databases;
    std::chrono::steady_clock::time_point IdentifiedAt;
  };

  static FileIdentity Identify(const std::string& path);
  std::shared_ptr<sqlite::Pool> PoolOf(const std::string& path);
  std::shared_ptr<sqlite::Pool> FindRecent(const std::string& path,
                                           std::chrono::steady_clock::time_point now);

  const RegionalSettings& regional_;
  const SqliteOptions options_;
  std::mutex mutex_;
  std::map<std::string, OpenFile, std::less<>> files_;
};

}  // namespace orlune
