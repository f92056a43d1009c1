// The month page compared with its bare statements, in calendars of several sizes.

#include <benchmark/benchmark.h>

#include "bare_statements.h"
#include "calendar_file.h"
#include "drivers/icu/icu_regional_settings.h"
#include "drivers/sqlite/sqlite_driver.h"
#include "ratio_reporter.h"
#include "visitor.h"

namespace orlune::bench {
namespace {

/// Enough to fill SQLite's page cache with everything that the page reads.
constexpr int kWarmUps = 50;

std::filesystem::path PreparedFile(int eventCount, const RegionalSettings& regional) {
  auto file = std::filesystem::path(ORLUNE_CALENDAR_FOLDER) / (std::to_string(eventCount) + ".db");
  MakeCalendarFile(file, eventCount, regional);
  return file;
}

class Setting {
 public:
  explicit Setting(const benchmark::State& state)
      : Regional(LoadRegionalSettings("en_US")),
        File(PreparedFile(static_cast<int>(state.range(0)), Regional)),
        Driver(Regional),
        User(Driver, File.string(), Regional) {
    const int shown = CountOf(User.Ask({}).Body, kShownTitle);
    if (shown != kShownOccurrences)
      throw std::runtime_error("the page shows " + std::to_string(shown) + " occurrences");
  }

  const RegionalSettings Regional;
  const std::filesystem::path File;
  SqliteDriver Driver;
  Visitor User;
};

template <class Action>
void Measure(benchmark::State& state, Action action) {
  for (int i = 0; i < kWarmUps; ++i) action();
  for ([[maybe_unused]] auto iteration : state) action();
}

void RenderMonthPage(benchmark::State& state) {
  Setting setting(state);
  Measure(state, [&] { benchmark::DoNotOptimize(setting.User.Ask({}).Body.data()); });
  state.counters["bytes"] = static_cast<double>(setting.User.Ask({}).Body.size());
}

void RunBareStatements(benchmark::State& state) {
  Setting setting(state);
  const auto queries = setting.User.Statements({});
  BareStatements statements(setting.File, setting.Regional, queries);
  Measure(state, [&] { benchmark::DoNotOptimize(statements.Run()); });
  state.counters["queries"] = static_cast<double>(queries.size());
  state.counters["rows"] = static_cast<double>(statements.Run());
}

void RegisterAll() {
  const auto configure = [](benchmark::internal::Benchmark* added) {
    added->Arg(1'000)
        ->Arg(20'000)
        ->Arg(1'000'000)
        ->Unit(benchmark::kMicrosecond)
        ->Repetitions(25)
        ->MinTime(0.1);
    added->ReportAggregatesOnly();
  };
  configure(benchmark::RegisterBenchmark("MonthPage", RenderMonthPage));
  configure(benchmark::RegisterBenchmark("BareStatements", RunBareStatements));
}

void PrintRatios(RatioReporter& reporter) {
  for (const char* const size : {"/1000", "/20000", "/1000000"})
    reporter.PrintRatio(std::string("MonthPage") + size, std::string("BareStatements") + size);
  reporter.PrintRatio("MonthPage/1000000", "MonthPage/1000");
  reporter.PrintRatio("BareStatements/1000000", "BareStatements/1000");
}

}  // namespace
}  // namespace orlune::bench

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  orlune::bench::RegisterAll();
  orlune::bench::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  orlune::bench::PrintRatios(reporter);
}
