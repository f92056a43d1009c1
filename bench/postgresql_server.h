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

/// The server that scripts/with_postgresql.sh runs, as its superuser. Everything throws std::runtime_error.
class PostgresqlServer {
 public:
  PostgresqlServer();

  std::uint16_t Port() const;
  /// The address of one of its databases, by way of another port when there is a proxy.
  std::string Address(const std::string& database, std::uint16_t port = 0) const;
  /// Makes `database` with the rows of a file from `MakeCalendarFile`, as a server is after its upkeep.
  void MakeDatabase(const std::string& database, const std::filesystem::path& file,
                    const RegionalSettings& regional) const;
  /// The processor time that all processes of the server have used so far.
  std::chrono::nanoseconds ProcessorTime() const;

 private:
  std::string address_;
  ServerConnection connection_;
  int mainProcess_ = 0;
};

}  // namespace orlune::bench
