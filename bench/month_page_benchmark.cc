// The pages of the three views compared with their bare statements, the month in calendars of several sizes.

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

void RenderPage(benchmark::State& state, const PageRequest& page) {
  Setting setting(state);
  Measure(state, [&] { benchmark::DoNotOptimize(setting.User.Ask(page).Body.data()); });
  state.counters["bytes"] = static_cast<double>(setting.User.Ask(page).Body.size());
}

void RunBareStatements(benchmark::State& state, const PageRequest& page) {
  Setting setting(state);
  const auto queries = setting.User.Statements(page);
  BareStatements statements(setting.File, setting.Regional, queries);
  Measure(state, [&] { benchmark::DoNotOptimize(statements.Run()); });
  state.counters["queries"] = static_cast<double>(queries.size());
  state.counters["rows"] = static_cast<double>(statements.Run());
}

void Register(const std::string& name, void (*run)(benchmark::State&, const PageRequest&),
              const PageRequest& page, const std::vector<std::int64_t>& sizes) {
  auto* added = benchmark::RegisterBenchmark(name.c_str(), run, page);
  for (const std::int64_t size : sizes) added->Arg(size);
  added->Unit(benchmark::kMicrosecond)->Repetitions(25)->MinTime(0.1)->ReportAggregatesOnly();
}

void RegisterAll() {
  Register("MonthPage", RenderPage, {}, {1'000, 20'000, 1'000'000});
  Register("BareStatements", RunBareStatements, {}, {1'000, 20'000, 1'000'000});
  for (const std::string view : {"week", "day"}) {
    Register(view + "_page", RenderPage, {{{"dm", view}}, {}}, {20'000});
    Register(view + "_statements", RunBareStatements, {{{"dm", view}}, {}}, {20'000});
  }
}

void PrintRatios(RatioReporter& reporter) {
  for (const char* const size : {"/1000", "/20000", "/1000000"})
    reporter.PrintRatio(std::string("MonthPage") + size, std::string("BareStatements") + size);
  reporter.PrintRatio("week_page/20000", "week_statements/20000");
  reporter.PrintRatio("day_page/20000", "day_statements/20000");
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
