#pragma once

#include <chrono>
#include <cstddef>

namespace orlune {

/// Limits of the connections to one PostgreSQL database. Time-outs that the address itself sets go first.
struct PostgresqlOptions {
  std::size_t MostConnections = 16;                    ///< for each region of the pages
  std::size_t KeptBytes = std::size_t{64} << 20U;      ///< results kept for each region of the pages
  std::chrono::milliseconds PoolWait{5000};            ///< how long a request waits for one of them
  std::chrono::seconds ConnectTimeout{5};              ///< for each host of the address
  std::chrono::milliseconds StatementTimeout{30'000};  ///< 0: none
  std::chrono::milliseconds LockTimeout{10'000};       ///< how long a statement waits for another writer
};

}  // namespace orlune
