// What a page costs when the database is far away: its round trips, and its time at several distances, with
// the queries announced and without. scripts/with_postgresql.sh has to run it.

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <exception>
#include <iomanip>
#include <iostream>
#include <memory>
#include <vector>

#include "calendar_file.h"
#include "delaying_proxy.h"
#include "drivers/icu/icu_regional_settings.h"
#include "drivers/postgresql/postgresql_driver.h"
#include "measured_pages.h"
#include "passing_connection.h"
#include "postgresql_server.h"

namespace orlune::bench {
namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr int kEvents = 20'000;
constexpr int kMessages = 10'000;
constexpr std::chrono::microseconds kDistances[] = {
    std::chrono::microseconds{0}, std::chrono::microseconds{200}, std::chrono::microseconds{2000}};
constexpr int kRounds = 12;
constexpr int kPagesInRound = 5;
constexpr int kWarmUps = 8;  // the server plans a prepared statement anew at its first five uses

/// One way to ask for pages: from a distance, announcing or not.
class Way {
 public:
  Way(const PostgresqlServer& server, const RegionalSettings& regional, std::chrono::nanoseconds distance,
      bool isAnnouncing, std::string_view user)
      : proxy_(server.Port(), distance),
        driver_(regional),
        unannounced_(driver_),
        visitor_(isAnnouncing ? static_cast<DatabaseDriver&>(driver_) : unannounced_,
                 server.Address("calendar", proxy_.Port()), regional, user) {}

  void WarmUp(const MeasuredPage& page) {
    for (int i = 0; i < kWarmUps; ++i) Try(visitor_, page);
    times_.clear();
    asked_ = roundTrips_ = 0;
  }
  void Measure(const MeasuredPage& page) {
    const std::uint64_t before = proxy_.RoundTrips();
    for (int i = 0; i < kPagesInRound; ++i) {
      const auto start = Clock::now();
      visitor_.Ask(page.Request);
      times_.push_back(Clock::now() - start);
    }
    roundTrips_ += proxy_.RoundTrips() - before;
    asked_ += kPagesInRound;
  }
  Milliseconds MedianTime() {
    const auto middle = times_.begin() + static_cast<std::ptrdiff_t>(times_.size() / 2);
    std::nth_element(times_.begin(), middle, times_.end());
    return *middle;
  }
  double RoundTrips() const { return static_cast<double>(roundTrips_) / static_cast<double>(asked_); }
  std::size_t Statements(const MeasuredPage& page) { return visitor_.Statements(page.Request).size(); }

 private:
  DelayingProxy proxy_;
  PostgresqlDriver driver_;
  UnannouncedDriver unannounced_;
  Visitor visitor_;
  std::vector<Clock::duration> times_;
  std::uint64_t roundTrips_ = 0;
  std::uint64_t asked_ = 0;
};

/// Both ways at each distance, the near ones first.
struct Ways {
  Ways(const PostgresqlServer& server, const RegionalSettings& regional, std::string_view user) {
    for (const auto distance : kDistances) {
      Before.push_back(std::make_unique<Way>(server, regional, distance, false, user));
      Now.push_back(std::make_unique<Way>(server, regional, distance, true, user));
    }
  }
  std::vector<std::unique_ptr<Way>> Before;  // unannounced
  std::vector<std::unique_ptr<Way>> Now;
};

void Print(Ways& ways, const MeasuredPage& page, const std::string& name) {
  const Milliseconds base = ways.Now.front()->MedianTime();
  std::cout << std::fixed << std::setprecision(0) << "| " << name << " | "
            << ways.Now.front()->Statements(page) << " | " << ways.Before.back()->RoundTrips() << " | "
            << ways.Now.back()->RoundTrips() << " | " << std::setprecision(2) << base.count() << " ms |";
  for (std::size_t i = 0; i < ways.Now.size(); ++i) {
    std::cout << ' ' << ways.Before[i]->MedianTime() / base << " | " << ways.Now[i]->MedianTime() / base
              << " |";
  }
  std::cout << std::endl;
}

void MeasurePage(Ways& ways, const MeasuredPage& page, const std::string& name) {
  for (auto* group : {&ways.Before, &ways.Now}) {
    for (const auto& way : *group) way->WarmUp(page);
  }
  for (int round = 0; round < kRounds; ++round) {
    for (std::size_t i = 0; i < ways.Now.size(); ++i) {
      ways.Before[i]->Measure(page);
      ways.Now[i]->Measure(page);
    }
  }
  Print(ways, page, name);
}

std::filesystem::path PreparedFile(const RegionalSettings& regional) {
  const std::filesystem::path folder = ORLUNE_CALENDAR_FOLDER;
  const auto original = folder / (std::to_string(kEvents) + ".db");
  MakeCalendarFile(original, kEvents, regional);
  auto copy = folder / "far.db";
  std::filesystem::copy_file(original, copy, std::filesystem::copy_options::overwrite_existing);
  AddReceivedMessages(copy, kMessages, regional, kOtherUser);
  return copy;
}

void RunAll() {
  const RegionalSettings regional = LoadRegionalSettings("en_US");
  const PostgresqlServer server;
  server.MakeDatabase("calendar", PreparedFile(regional), regional);
  std::cout << "Round trips and times without announcing and with; times as multiples of the announced page "
               "at no distance.\n\n"
               "| page | statements | round trips before | now | time | 0 ms before | now | 0.2 ms before | "
               "now | 2 ms before | now |\n"
               "|---|--:|--:|--:|--:|--:|--:|--:|--:|--:|--:|\n";
  Ways ways(server, regional, kUser);
  for (const MeasuredPage& page : {LoginPage(), MonthPage(), WeekPage(), EventForm(), MessageForm(),
                                   MessageListPage(), SavedEvent(), SentSuggestion()})
    MeasurePage(ways, page, page.Name);
  Ways otherWays(server, regional, kOtherUser);
  MeasurePage(otherWays, MessageListPage(), "message list, 289 senders");
}

}  // namespace
}  // namespace orlune::bench

int main() {
  try {
    orlune::bench::RunAll();
    return 0;
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
