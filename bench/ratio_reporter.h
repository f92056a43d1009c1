#pragma once

#include <map>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

namespace orlune::bench {

/// A console reporter that also records each benchmark's median time, for ratios at the end.
class RatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override;

  /// Prints the time of `name` divided by that of `base`; nothing when one of them did not run.
  void PrintRatio(const std::string& name, const std::string& base);

 private:
  std::map<std::string, double> medians_;  // CPU time by full name
};

}  // namespace orlune::bench
