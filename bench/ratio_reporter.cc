#include "ratio_reporter.h"

#include <iomanip>

namespace orlune::bench {

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
  ConsoleReporter::ReportRuns(runs);
  for (const Run& run : runs) {
    if (run.run_type == Run::RT_Aggregate && run.aggregate_name == "median")
      medians_[run.run_name.function_name + '/' + run.run_name.args] = run.GetAdjustedCPUTime();
  }
}

void RatioReporter::PrintRatio(const std::string& name, const std::string& base) {
  const auto longer = medians_.find(name);
  const auto shorter = medians_.find(base);
  if (longer == medians_.end() || shorter == medians_.end()) return;
  GetOutputStream() << name << " : " << base << " = " << std::fixed << std::setprecision(2)
                    << longer->second / shorter->second << '\n';
}

}  // namespace orlune::bench
