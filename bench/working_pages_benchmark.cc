// Working pages compared with their bare statements: saving an event, searching 100,000 events, and listing
// 10,000 messages.

#include <stdexcept>

#include <benchmark/benchmark.h>

#include "bare_statements.h"
#include "calendar_file.h"
#include "drivers/icu/icu_regional_settings.h"
#include "drivers/sqlite/sqlite_driver.h"
#include "ratio_reporter.h"
#include "visitor.h"

namespace orlune::bench {
namespace {

constexpr int kEvents = 100'000;
constexpr int kMessages = 10'000;
/// The events titled `kShownTitle` in calendars that are not hidden.
constexpr int kShownEvents = 41;

/// A request, and the text that its response contains once for each row.
struct WorkingPage {
  const char* Name;
  PageRequest Request;
  std::string_view Row;
  int Rows;
};

const std::vector<WorkingPage>& Pages() {
  static const std::vector<WorkingPage> pages{
      {"SaveEvent",
       {{{"p", "e"}, {"act", "save"}},
        {{"title", "Lunch"},
         {"reptype", "none"},
         {"date1", "3/15/2004"},
         {"time1", "12:00"},
         {"time2", "13:00"},
         {"addinfo", "At the usual place"},
         {"calendar", std::string(kUser)}}},
       "",
       0},
      {"SearchEverywhere",
       {{{"p", "e"}, {"act", "results"}}, {{"search", std::string(kShownTitle)}, {"date1", "1/1/1990"}}},
       "NAME=\"id\"",
       kShownEvents},
      {"SearchOneCalendar",
       {{{"p", "e"}, {"act", "results"}}, {{"search", "event 9"}, {"cal", "sales"}, {"date1", "1/1/1990"}}},
       "NAME=\"id\"",
       -1},
      {"MessageList", {{{"p", "m"}}, {}}, "NAME=\"msg\"", -1},
  };
  return pages;
}

/// A separate file for each benchmark, since saving changes it.
std::filesystem::path FreshFile(const RegionalSettings& regional) {
  const std::filesystem::path folder = ORLUNE_CALENDAR_FOLDER;
  const auto original = folder / (std::to_string(kEvents) + ".db");
  MakeCalendarFile(original, kEvents, regional);
  const auto copy = folder / "working.db";
  for (const char* const suffix : {"", "-wal", "-shm"}) std::filesystem::remove(copy.string() + suffix);
  std::filesystem::copy_file(original, copy);
  AddReceivedMessages(copy, kMessages, regional);
  return copy;
}

struct Setting {
  explicit Setting(const WorkingPage& page)
      : Regional(LoadRegionalSettings("en_US")),
        File(FreshFile(Regional)),
        Driver(Regional),
        User(Driver, File.string(), Regional) {
    const testing::Answer& answer = User.Ask(page.Request);
    const int shown = page.Row.empty() ? 0 : CountOf(answer.Body, page.Row);
    if (page.Rows >= 0 && shown != page.Rows)
      throw std::runtime_error(std::string(page.Name) + " shows " + std::to_string(shown) + " rows");
    if (page.Row.empty() && answer.RedirectedTo.empty())
      throw std::runtime_error(std::string(page.Name) + " was refused");
  }

  const RegionalSettings Regional;
  const std::filesystem::path File;
  SqliteDriver Driver;
  Visitor User;
};

void RenderPage(benchmark::State& state, const WorkingPage& page) {
  Setting setting(page);
  for ([[maybe_unused]] auto iteration : state)
    benchmark::DoNotOptimize(setting.User.Ask(page.Request).Body.data());
  state.counters["bytes"] = static_cast<double>(setting.User.Ask(page.Request).Body.size());
}

void RunBareStatements(benchmark::State& state, const WorkingPage& page) {
  Setting setting(page);
  const auto recorded = setting.User.Statements(page.Request);
  BareStatements statements(setting.File, setting.Regional, recorded);
  for ([[maybe_unused]] auto iteration : state) benchmark::DoNotOptimize(statements.Run());
  state.counters["statements"] = static_cast<double>(recorded.size());
}

std::string BareName(const WorkingPage& page) {
  return std::string(page.Name) + "Statements";
}

void RegisterAll() {
  for (const WorkingPage& page : Pages()) {
    const auto add = [&](const std::string& name, void (*run)(benchmark::State&, const WorkingPage&)) {
      benchmark::RegisterBenchmark(name.c_str(), run, page)
          ->Unit(benchmark::kMicrosecond)
          ->Repetitions(5)
          ->MinTime(0.2)
          ->ReportAggregatesOnly();
    };
    add(page.Name, RenderPage);
    add(BareName(page), RunBareStatements);
  }
}

}  // namespace
}  // namespace orlune::bench

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  orlune::bench::RegisterAll();
  orlune::bench::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  for (const auto& page : orlune::bench::Pages())
    reporter.PrintRatio(std::string(page.Name) + '/', orlune::bench::BareName(page) + '/');
}
