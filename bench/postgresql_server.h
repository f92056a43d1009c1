#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

#include "base/regional_settings.h"

struct pg_conn;

namespace orlune::bench {

struct CloseConnection {
  void operator()(pg_conn* connection) const noexcept;
};
using ServerConnection = std::unique_ptr<pg_conn, CloseConnection>;

/// A superuser's connection to the server of scripts/with_postgresql.sh. All functions throw
/// std::runtime_error.
class PostgresqlServer {
 public:
  PostgresqlServer();

  std::uint16_t Port() const;
  /// The address of one of its databases; `port` is that of a proxy, 0 for the server's own.
  std::string Address(const std::string& database, std::uint16_t port = 0) const;
  /// Creates `database` with the rows of a file from `MakeCalendarFile`, vacuumed and analyzed.
  void MakeDatabase(const std::string& database, const std::filesystem::path& file,
                    const RegionalSettings& regional) const;
  /// The processor time of all processes of the server so far.
  std::chrono::nanoseconds ProcessorTime() const;

 private:
  std::string address_;
  ServerConnection connection_;
  int mainProcess_ = 0;
};

}  // namespace orlune::bench
