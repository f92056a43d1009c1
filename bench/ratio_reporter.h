#pragma once

#include <map>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

namespace orlune::bench {

/// Prints benchmarks as usual and keeps each one's median time, for ratios at the end.
class RatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override;

  /// Prints how many times longer `name` takes than `base`; nothing when one of them did not run.
  void PrintRatio(const std::string& name, const std::string& base);

 private:
  std::map<std::string, double> medians_;  // CPU time by full name
};

}  // namespace orlune::bench
