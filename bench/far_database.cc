// What a page costs when the database is remote: its round trips, and its time at several latencies, with and
// without prefetching its queries. Run it with scripts/with_postgresql.sh.

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
constexpr std::chrono::microseconds kLatencies[] = {
    std::chrono::microseconds{0}, std::chrono::microseconds{200}, std::chrono::microseconds{2000}};
constexpr int kRounds = 12;
constexpr int kPagesInRound = 5;
constexpr int kWarmUps = 8;  // the server replans a prepared statement at its first five uses

/// Requests pages at one latency, with or without prefetching, and measures them.
class Setup {
 public:
  Setup(const PostgresqlServer& server, const RegionalSettings& regional, std::chrono::nanoseconds latency,
        bool isPrefetching, std::string_view user)
      : proxy_(server.Port(), latency),
        driver_(regional),
        nonPrefetching_(driver_),
        visitor_(isPrefetching ? static_cast<DatabaseDriver&>(driver_) : nonPrefetching_,
                 server.Address("calendar", proxy_.Port()), regional, user) {}

  void WarmUp(const MeasuredPage& page) {
    for (int i = 0; i < kWarmUps; ++i) Try(visitor_, page);
    times_.clear();
    requests_ = roundTrips_ = 0;
  }
  void Measure(const MeasuredPage& page) {
    const std::uint64_t before = proxy_.RoundTrips();
    for (int i = 0; i < kPagesInRound; ++i) {
      const auto start = Clock::now();
      visitor_.Ask(page.Request);
      times_.push_back(Clock::now() - start);
    }
    roundTrips_ += proxy_.RoundTrips() - before;
    requests_ += kPagesInRound;
  }
  Milliseconds MedianTime() {
    const auto middle = times_.begin() + static_cast<std::ptrdiff_t>(times_.size() / 2);
    std::nth_element(times_.begin(), middle, times_.end());
    return *middle;
  }
  double RoundTrips() const { return static_cast<double>(roundTrips_) / static_cast<double>(requests_); }
  std::size_t Statements(const MeasuredPage& page) { return visitor_.Statements(page.Request).size(); }

 private:
  DelayingProxy proxy_;
  PostgresqlDriver driver_;
  NonPrefetchingDriver nonPrefetching_;
  Visitor visitor_;
  std::vector<Clock::duration> times_;
  std::uint64_t roundTrips_ = 0;
  std::uint64_t requests_ = 0;
};

/// A setup of either kind for each latency, in ascending order.
struct Setups {
  Setups(const PostgresqlServer& server, const RegionalSettings& regional, std::string_view user) {
    for (const auto latency : kLatencies) {
      Serial.push_back(std::make_unique<Setup>(server, regional, latency, false, user));
      Pipelined.push_back(std::make_unique<Setup>(server, regional, latency, true, user));
    }
  }
  std::vector<std::unique_ptr<Setup>> Serial;  // without prefetching: one query after the other
  std::vector<std::unique_ptr<Setup>> Pipelined;
};

void Print(Setups& setups, const MeasuredPage& page, const std::string& name) {
  const Milliseconds base = setups.Pipelined.front()->MedianTime();
  std::cout << std::fixed << std::setprecision(0) << "| " << name << " | "
            << setups.Pipelined.front()->Statements(page) << " | " << setups.Serial.back()->RoundTrips()
            << " | " << setups.Pipelined.back()->RoundTrips() << " | " << std::setprecision(2) << base.count()
            << " ms |";
  for (std::size_t i = 0; i < setups.Pipelined.size(); ++i) {
    std::cout << ' ' << setups.Serial[i]->MedianTime() / base << " | "
              << setups.Pipelined[i]->MedianTime() / base << " |";
  }
  std::cout << std::endl;
}

void MeasurePage(Setups& setups, const MeasuredPage& page, const std::string& name) {
  for (auto* group : {&setups.Serial, &setups.Pipelined}) {
    for (const auto& setup : *group) setup->WarmUp(page);
  }
  for (int round = 0; round < kRounds; ++round) {
    for (std::size_t i = 0; i < setups.Pipelined.size(); ++i) {
      setups.Serial[i]->Measure(page);
      setups.Pipelined[i]->Measure(page);
    }
  }
  Print(setups, page, name);
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
  std::cout
      << "Round trips and times, serial and pipelined; times as multiples of the pipelined page without "
         "latency.\n\n"
         "| page | statements | round trips serial | pipelined | time | 0 ms serial | pipelined | "
         "0.2 ms serial | pipelined | 2 ms serial | pipelined |\n"
         "|---|--:|--:|--:|--:|--:|--:|--:|--:|--:|--:|\n";
  Setups setups(server, regional, kUser);
  for (const MeasuredPage& page : {LoginPage(), MonthPage(), WeekPage(), EventForm(), MessageForm(),
                                   MessageListPage(), SavedEvent(), SentSuggestion()})
    MeasurePage(setups, page, page.Name);
  Setups otherSetups(server, regional, kOtherUser);
  MeasurePage(otherSetups, MessageListPage(), "message list, 289 senders");
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
