#pragma once

#include <chrono>
#include <vector>

#include "postgresql_server.h"
#include "visitor.h"

namespace orlune::bench {

using Microseconds = std::chrono::duration<double, std::micro>;

/// The processor time of one page: of this process, and of all processes of the database server.
struct Cost {
  Microseconds Node;
  Microseconds Database;

  Microseconds Sum() const { return Node + Database; }
};

Cost MedianOf(std::vector<Cost> costs);

/// Requests the page for some tenths of a second. Rounds of what is compared should alternate: then the
/// ratios hold on a busy machine, too.
Cost MeasureRound(Visitor& visitor, const PageRequest& request, const PostgresqlServer& server);

}  // namespace orlune::bench
