// kept_results_stress FOLDER SECONDS: several processes write counters into one SQLite file and read them all
// the time, and what triggers make of some of them. Fails when a request sees less than was acknowledged
// before it began, or two states of the file at once.

#include <array>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <functional>
#include <iostream>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <fmt/format.h>
#include <sqlite3.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include "drivers/icu/icu_regional_settings.h"
#include "drivers/sqlite/base_schema.h"
#include "drivers/sqlite/handles.h"
#include "drivers/sqlite/sqlite_driver.h"
#include "store/schema_upgrade.h"
#include "store/sharing_tables.h"
#include "store/statement.h"

namespace orlune::bench {
namespace {

constexpr std::chrono::milliseconds kPatience{30000};
constexpr std::size_t kServers = 2;
constexpr std::size_t kWritersOfServer = 2;
constexpr std::size_t kReadersOfServer = 3;
/// Those of the servers, and a program that knows only SQLite.
constexpr std::size_t kWriters = kServers * kWritersOfServer + 1;
using Counters = std::array<std::int64_t, kWriters>;

/// What all processes share.
struct Board {
  /// A writer's counter that is acknowledged: of the two tables that are written together, and of the third.
  std::array<std::atomic<std::int64_t>, kWriters> Together{};
  std::array<std::atomic<std::int64_t>, kWriters> Alone{};
  std::atomic<std::int64_t> Changes = 0;  ///< acknowledged, that a trigger has logged
  std::atomic<std::int64_t> Requests = 0;
  std::atomic<std::int64_t> Kept = 0;
  std::atomic<bool> IsOver = false;
};

Board& MakeBoard() {
  void* memory = mmap(nullptr, sizeof(Board), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) throw std::runtime_error("no shared memory");
  return *new (memory) Board;
}

[[noreturn]] void Fail(const std::string& cause) {
  std::cerr << cause << std::endl;
  _exit(1);
}

Counters Load(const std::array<std::atomic<std::int64_t>, kWriters>& acknowledged) {
  Counters counters{};
  for (std::size_t i = 0; i < kWriters; ++i) counters[i] = acknowledged[i];
  return counters;
}

void Pause(std::mt19937& random, unsigned mostMicroseconds) {
  std::this_thread::sleep_for(std::chrono::microseconds(random() % mostMicroseconds));
}

std::string PathOf(const std::string& folder) {
  return folder + "/stress.db";
}

void MakeFile(const std::string& folder) {
  for (const char* suffix : {"", "-wal", "-shm"}) std::filesystem::remove(PathOf(folder) + suffix);
  CreateBaseDatabase(PathOf(folder), [](const std::filesystem::path& file) {
    const auto database = sqlite::OpenExisting(file, kPatience);
    for (std::size_t i = 0; i < kWriters; ++i) {
      const std::string rows = fmt::format(
          "INSERT INTO Calendars (Name, FriendlyName) VALUES ('{0}', '0');"
          "INSERT INTO Messages (Recipient, Subject) VALUES ('{0}', '0');"
          "INSERT INTO StyleSheets (SheetName, SheetFile) VALUES ('{0}', '0');"
          "INSERT INTO Events (Owner, EventName) VALUES ('{0}', '0')",
          i);
      sqlite::Run(database.get(), rows.c_str());
    }
  });
  const RegionalSettings regional = LoadRegionalSettings("en_US");
  SqliteDriver driver(regional);
  const auto connection = driver.Open(PathOf(folder));
  UpgradeSchema(*connection);
  CreateSharingTables(*connection);
}

/// Each change of an event gets a higher number in the log.
void ChangeEvent(Board& board, Connection& connection, std::size_t writer, std::int64_t next) {
  connection.Execute(Statement("UPDATE Events SET EventName = '{}' WHERE Owner = '{}'", next, writer));
  ++board.Changes;
}

/// One of the server's writers; some of its saves change nothing.
void Write(Board& board, DatabaseDriver& driver, const std::string& path, std::size_t writer) {
  std::mt19937 random(static_cast<unsigned>(writer));
  while (!board.IsOver) {
    const auto connection = driver.Open(path);
    if (random() % 2 == 0) {
      const std::int64_t next = board.Together[writer] + 1;
      connection->Begin();
      connection->Execute(
          Statement("UPDATE Calendars SET FriendlyName = '{}' WHERE Name = '{}'", next, writer));
      connection->Execute(
          Statement("UPDATE Messages SET Subject = '{}' WHERE Recipient = '{}'", next, writer));
      if (random() % 8 == 0) {
        connection->Rollback();
      } else {
        connection->Commit();
        board.Together[writer] = next;
      }
    } else {
      const bool isChange = random() % 2 == 1;
      const std::int64_t next = board.Alone[writer] + (isChange ? 1 : 0);
      connection->Execute(
          Statement("UPDATE StyleSheets SET SheetFile = '{}' WHERE SheetName = '{}'", next, writer));
      board.Alone[writer] = next;
      if (isChange) ChangeEvent(board, *connection, writer, next);
    }
    Pause(random, 4000);
  }
}

void WriteAsAnotherProgram(Board& board, const std::string& path, std::size_t writer) {
  std::mt19937 random(static_cast<unsigned>(writer));
  while (!board.IsOver) {
    // Closing it merges the log now and then.
    const auto database = sqlite::OpenExisting(path, kPatience);
    for (int i = 0; i < 50; ++i) {
      const std::string save = fmt::format(
          "BEGIN IMMEDIATE;"
          "UPDATE Calendars SET FriendlyName = '{1}' WHERE Name = '{0}';"
          "UPDATE Messages SET Subject = '{1}' WHERE Recipient = '{0}'; COMMIT",
          writer, board.Together[writer] + 1);
      sqlite::Run(database.get(), save.c_str());
      ++board.Together[writer];
      if (random() % 10 == 0) {
        // It waits for a moment without readers, and lets nobody else write meanwhile.
        sqlite3_busy_timeout(database.get(), 100);
        sqlite::Run(database.get(),
                    random() % 2 == 0 ? "PRAGMA wal_checkpoint(TRUNCATE)" : "PRAGMA wal_checkpoint(RESTART)");
        sqlite3_busy_timeout(database.get(), static_cast<int>(kPatience.count()));
      }
      Pause(random, 10000);
    }
  }
}

/// Reads one table in a request.
struct Reading {
  Statement Query;
  std::unique_ptr<ResultSet> Rows{};
  const char* Place = nullptr;
  Counters Seen{};

  /// Returns whether the rows are those in memory that were read before.
  bool Read(Connection& connection) {
    auto rows = connection.Query(Query);
    const char* place = nullptr;
    for (std::size_t i = 0; rows->Next(); ++i) {
      const Value field = rows->Get(0);
      const auto text = std::get<std::string_view>(field);
      if (place == nullptr) place = text.data();
      Seen.at(i) = std::stoll(std::string(text));
    }
    const bool isKept = place == Place;
    Place = place;
    Rows = std::move(rows);  // the former ones until now, lest others take their place
    return isKept;
  }
};

void RequireLogged(Connection& connection, std::int64_t acknowledged) {
  const auto newest =
      connection.Query(Statement("SELECT TOP 1 Moment FROM CalendarChanges ORDER BY Moment DESC"));
  const std::int64_t seen = newest->Next() ? std::get<std::int64_t>(newest->Get(0)) : 0;
  if (seen < acknowledged)
    Fail(fmt::format("stale CalendarChanges: {} changes were saved, a later request read {}", acknowledged,
                     seen));
}

void RequireAtLeast(const Counters& seen, const Counters& acknowledged, const char* table) {
  for (std::size_t i = 0; i < kWriters; ++i) {
    if (seen[i] < acknowledged[i])
      Fail(std::string("stale ") + table + ": writer " + std::to_string(i) + " saved " +
           std::to_string(acknowledged[i]) + ", a later request read " + std::to_string(seen[i]));
  }
}

void Request(Board& board, DatabaseDriver& driver, const std::string& path, unsigned seed) {
  std::mt19937 random(seed);
  std::array<Reading, 3> readings{{{Statement("SELECT FriendlyName FROM Calendars")},
                                   {Statement("SELECT Subject FROM Messages")},
                                   {Statement("SELECT SheetFile FROM StyleSheets")}}};
  while (!board.IsOver) {
    const Counters together = Load(board.Together);
    const Counters alone = Load(board.Alone);
    const std::int64_t changes = board.Changes;
    const auto connection = driver.Open(path);
    for (std::size_t first = random(), i = 0; i < 4; ++i) {
      if (readings[(first + i) % 3].Read(*connection)) ++board.Kept;
      if (random() % 4 == 0) Pause(random, 1000);
    }
    RequireAtLeast(readings[0].Seen, together, "Calendars");
    RequireAtLeast(readings[1].Seen, together, "Messages");
    RequireAtLeast(readings[2].Seen, alone, "StyleSheets");
    RequireLogged(*connection, changes);
    if (readings[0].Seen != readings[1].Seen) Fail("one request read two states of the file");
    ++board.Requests;
  }
}

void Serve(Board& board, const std::string& path, std::size_t server) {
  const RegionalSettings regional = LoadRegionalSettings("en_US");
  SqliteDriver driver(regional, {.BusyTimeout = kPatience});
  std::vector<std::jthread> threads;
  for (std::size_t i = 0; i < kWritersOfServer; ++i)
    threads.emplace_back([&, i] { Write(board, driver, path, server * kWritersOfServer + i); });
  for (std::size_t i = 0; i < kReadersOfServer; ++i)
    threads.emplace_back([&, i] { Request(board, driver, path, static_cast<unsigned>(100 * server + i)); });
}

pid_t Start(const std::function<void()>& work) {
  const pid_t child = fork();
  if (child != 0) return child;
  try {
    work();
    _exit(0);
  } catch (const std::exception& error) {
    Fail(error.what());
  }
}

bool Succeeded(pid_t child) {
  int status = 0;
  return waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

bool Stress(const std::string& folder, std::chrono::seconds duration) {
  MakeFile(folder);
  Board& board = MakeBoard();
  const std::string path = PathOf(folder);
  std::vector<pid_t> children;
  for (std::size_t server = 0; server < kServers; ++server)
    children.push_back(Start([&, server] { Serve(board, path, server); }));
  children.push_back(Start([&] { WriteAsAnotherProgram(board, path, kWriters - 1); }));
  std::this_thread::sleep_for(duration);
  board.IsOver = true;
  bool succeeded = true;
  for (const pid_t child : children) succeeded = Succeeded(child) && succeeded;
  std::int64_t saves = 0;
  for (std::size_t i = 0; i < kWriters; ++i) saves += board.Together[i] + board.Alone[i];
  std::cout << board.Requests << " requests with 4 queries each, " << board.Kept << " of them kept; " << saves
            << " saves\n";
  return succeeded;
}

}  // namespace
}  // namespace orlune::bench

int main(int argc, char** argv) {
  try {
    if (argc != 3) throw std::invalid_argument("usage: kept_results_stress FOLDER SECONDS");
    return orlune::bench::Stress(argv[1], std::chrono::seconds(std::stoi(argv[2]))) ? 0 : 1;
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
