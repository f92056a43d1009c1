#include "page_cost.h"

#include <algorithm>

#include <sys/resource.h>

namespace orlune::bench {
namespace {

constexpr std::chrono::milliseconds kRoundTime{400};

std::chrono::nanoseconds OwnTime() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return std::chrono::seconds(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
         std::chrono::microseconds(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec);
}

}  // namespace

Cost MedianOf(std::vector<Cost> costs) {
  const auto middle = costs.begin() + static_cast<std::ptrdiff_t>(costs.size() / 2);
  std::nth_element(costs.begin(), middle, costs.end(),
                   [](const Cost& a, const Cost& b) { return a.Sum() < b.Sum(); });
  return *middle;
}

Cost MeasureRound(Visitor& visitor, const PageRequest& request, const PostgresqlServer& server) {
  using Clock = std::chrono::steady_clock;
  const auto nodeBefore = OwnTime();
  const auto databaseBefore = server.ProcessorTime();
  const auto end = Clock::now() + kRoundTime;
  int requests = 0;
  do {
    visitor.Ask(request);
    ++requests;
  } while (Clock::now() < end);
  return {Microseconds(OwnTime() - nodeBefore) / requests,
          Microseconds(server.ProcessorTime() - databaseBefore) / requests};
}

}  // namespace orlune::bench
