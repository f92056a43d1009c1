// The processor time of a page in the node and in the database, on each engine, in calendars of several sizes
// and with many calendars to choose from. Run it with scripts/with_postgresql.sh; its arguments select the
// sections growth, work and choice_lists, all by default.

#include <exception>
#include <iomanip>
#include <iostream>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "calendar_file.h"
#include "drivers/icu/icu_regional_settings.h"
#include "drivers/postgresql/postgresql_driver.h"
#include "drivers/sqlite/sqlite_driver.h"
#include "measured_pages.h"
#include "page_cost.h"
#include "postgresql_server.h"

namespace orlune::bench {
namespace {

constexpr int kMessages = 10'000;
constexpr int kVisibleUsers = 10'000;
constexpr int kRounds = 7;
constexpr int kWarmUps = 8;

/// The same rows in both engines, and a visitor of each.
class Calendar {
 public:
  Calendar(const PostgresqlServer& server, const std::filesystem::path& file,
           const RegionalSettings& regional)
      : server_(server),
        sqlite_(regional),
        postgresql_(regional),
        atFile_(sqlite_, file.string(), regional),
        atServer_(postgresql_, AddressOfCopy(server, file, regional), regional) {}

  /// Prints a line about `page`, labelled `name`.
  void Measure(const MeasuredPage& page, const std::string& name) {
    std::vector<Cost> file;
    std::vector<Cost> server;
    for (int i = 0; i < kWarmUps; ++i) {
      Try(atFile_, page);
      Try(atServer_, page);
    }
    for (int round = 0; round < kRounds; ++round) {
      file.push_back(MeasureRound(atFile_, page.Request, server_));
      server.push_back(MeasureRound(atServer_, page.Request, server_));
    }
    const Cost onFile = MedianOf(file);
    const Cost onServer = MedianOf(server);
    const double node = onFile.Node.count();
    std::cout << std::fixed << std::setprecision(0) << "| " << name << " | "
              << atFile_.Ask(page.Request).Body.size() << " | " << node << " us | " << std::setprecision(2)
              << onServer.Node.count() / node << " | " << onServer.Database.count() / node << " | "
              << onServer.Sum().count() / node << " |" << std::endl;
  }

 private:
  static std::string AddressOfCopy(const PostgresqlServer& server, const std::filesystem::path& file,
                                   const RegionalSettings& regional) {
    server.MakeDatabase("calendar", file, regional);
    return server.Address("calendar");
  }

  const PostgresqlServer& server_;
  SqliteDriver sqlite_;
  PostgresqlDriver postgresql_;
  Visitor atFile_;
  Visitor atServer_;
};

std::filesystem::path PreparedFile(int events, const RegionalSettings& regional) {
  auto file = std::filesystem::path(ORLUNE_CALENDAR_FOLDER) / (std::to_string(events) + ".db");
  MakeCalendarFile(file, events, regional);
  return file;
}

/// A copy that pages may change.
std::filesystem::path FreshCopy(const std::filesystem::path& file) {
  auto copy = file.parent_path() / "processor_time.db";
  for (const char* const suffix : {"", "-wal", "-shm"}) std::filesystem::remove(copy.string() + suffix);
  std::filesystem::copy_file(file, copy);
  return copy;
}

std::string Named(const MeasuredPage& page, const char* setting) {
  return page.Name + ", " + setting;
}

void MeasureGrowth(const PostgresqlServer& server, const RegionalSettings& regional) {
  for (const int events : {1'000, 20'000, 1'000'000}) {
    Calendar calendar(server, PreparedFile(events, regional), regional);
    calendar.Measure(MonthPage(), Named(MonthPage(), (std::to_string(events) + " events").c_str()));
  }
}

void MeasureWork(const PostgresqlServer& server, const RegionalSettings& regional) {
  const auto file = FreshCopy(PreparedFile(100'000, regional));
  AddReceivedMessages(file, kMessages, regional);
  Calendar calendar(server, file, regional);
  for (const MeasuredPage& page :
       {SearchEverywhere(), SearchOneCalendar(), MessageListPage(), SavedEvent(), SentSuggestion()})
    calendar.Measure(page, Named(page, "100000 events"));
}

void MeasureChoiceLists(const PostgresqlServer& server, const RegionalSettings& regional) {
  const auto file = FreshCopy(PreparedFile(20'000, regional));
  AddVisibleUsers(file, kVisibleUsers, regional);
  Calendar calendar(server, file, regional);
  for (const MeasuredPage& page : {MonthPage(), EventForm(), MessageForm()})
    calendar.Measure(page, Named(page, "10000 calendars"));
}

using Section = void (*)(const PostgresqlServer&, const RegionalSettings&);
const std::map<std::string_view, Section> kSections{
    {"choice_lists", MeasureChoiceLists}, {"growth", MeasureGrowth}, {"work", MeasureWork}};

/// Runs the named sections; all when `names` is empty.
void Run(const std::vector<std::string_view>& names) {
  const RegionalSettings regional = LoadRegionalSettings("en_US");
  const PostgresqlServer server;
  std::cout << "Processor time for one page: on SQLite, and on PostgreSQL as multiples of that.\n\n"
               "| page | bytes | SQLite | node | database | both |\n|---|--:|--:|--:|--:|--:|\n";
  for (const std::string_view name : names) kSections.at(name)(server, regional);
  if (!names.empty()) return;
  for (const auto& [name, section] : kSections) section(server, regional);
}

}  // namespace
}  // namespace orlune::bench

int main(int argc, char** argv) {
  try {
    orlune::bench::Run({argv + 1, argv + argc});
    return 0;
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
