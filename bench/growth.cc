// How the processor time of pages grows with what they show, on each engine: with the calendars of a group
// view, the events of a day, the calendars to choose from, the messages of a list, and the groups of a user.
// Run it with scripts/with_postgresql.sh.

#include <exception>
#include <iomanip>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "base/lists.h"
#include "calendar_file.h"
#include "drivers/icu/icu_regional_settings.h"
#include "drivers/postgresql/postgresql_driver.h"
#include "drivers/sqlite/sqlite_driver.h"
#include "measured_pages.h"
#include "page_cost.h"
#include "postgresql_server.h"
#include "store/event_store.h"
#include "store/statement.h"

namespace orlune::bench {
namespace {

constexpr int kRounds = 5;
constexpr int kEventsOfMember = 20;

void AddEvent(Connection& database, const RegionalSettings& regional, const std::string& owner, int number,
              Date day) {
  OL_Event event;
  event.EventName = "Entry " + std::to_string(number);
  event.Owner = owner;
  event.BeginDate = event.EndDate = day;
  event.BeginTime = std::chrono::hours{8 + number % 8};
  event.EndTime = std::chrono::hours{9 + number % 8};
  SaveEvent(database, regional, event, {});
}

std::vector<std::string> NumberedNames(std::string_view name, int count) {
  std::vector<std::string> names;
  for (int i = 0; i < count; ++i) names.push_back(std::string(name) + std::to_string(i));
  return names;
}

void AddGroupView(Connection& database, const RegionalSettings& regional, int members) {
  const std::vector<std::string> names = NumberedNames("member", members);
  const std::vector<std::string> colours(names.size(), "#FFEEDD");
  database.Execute(
      Statement("INSERT INTO GroupViews (FriendlyName, Name, Owner, Calendars, BackGround, ForeGround) "
                "VALUES ('Large', 'large', '{}', '{}', '{}', '{}')",
                kUser, JoinList(names), JoinList(colours), JoinList(colours)));
  for (const std::string& name : names) {
    for (int i = 0; i < kEventsOfMember; ++i)
      AddEvent(database, regional, name, i, kToday + std::chrono::days{i - kEventsOfMember / 2});
  }
}

void AddEventsOfToday(Connection& database, const RegionalSettings& regional, int count) {
  for (int i = 0; i < count; ++i) AddEvent(database, regional, std::string(kUser), i, kToday);
}

void AddCalendars(Connection& database, const RegionalSettings& /*regional*/, int count) {
  for (const std::string& name : NumberedNames("entry", count)) {
    database.Execute(Statement(
        "INSERT INTO Calendars (Name, FriendlyName, IsGroup, IsHidden) VALUES ('{}', 'Entry of {}', no, no)",
        name, name));
  }
}

void AddMessages(Connection& database, const RegionalSettings& /*regional*/, int count) {
  for (int i = 0; i < count; ++i) {
    database.Execute(
        Statement("INSERT INTO Messages (Sender, Recipient, SentDate, Subject, Content, Viewed) "
                  "VALUES ('user{}', '{}', '3/1/2004 10:00:00', 'Entry {}', 'See you there.', yes)",
                  100 + i % 100, kUser, i));
  }
}

void AddGroups(Connection& database, const RegionalSettings& /*regional*/, int count) {
  const std::vector<std::string> names = NumberedNames("group", count);
  for (const std::string& name : names) {
    database.Execute(
        Statement("INSERT INTO Calendars (Name, FriendlyName, IsGroup, IsHidden) VALUES ('{}', 'Entry of "
                  "{}', yes, yes)",
                  name, name));
  }
  const std::string all = JoinList(names);
  database.Execute(Statement(
      "UPDATE Calendars SET MemberOfGroups = '{}', AdminOfGroups = '{}' WHERE Name = '{}'", all, all, kUser));
}

PageRequest View(const char* calendar, const char* mode) {
  return {{{"cn", calendar}, {"dm", mode}}, {}};
}

/// What grows, tenfold from one size to the next, and pages that show it.
struct Growth {
  std::string Name;
  std::vector<int> Sizes;
  void (*Add)(Connection& database, const RegionalSettings& regional, int size);
  std::vector<MeasuredPage> Pages;
};

const std::vector<Growth>& Growths() {
  static const std::vector<Growth> growths{
      {"calendars of a group view",
       {20, 200, 2'000},
       AddGroupView,
       {{"month", View("@large", "month")},
        {"week", View("@large", "week")},
        {"day", View("@large", "day")}}},
      {"events on a day",
       {200, 2'000, 20'000},
       AddEventsOfToday,
       {{"month", View("user000", "month")},
        {"week", View("user000", "week")},
        {"day", View("user000", "day")}}},
      {"calendars to choose from",
       {100, 1'000, 10'000},
       AddCalendars,
       {{"month", View("user000", "month")}, MessageForm()}},
      {"messages", {100, 1'000, 10'000}, AddMessages, {MessageListPage()}},
      {"groups of the user",
       {100, 1'000, 10'000},
       AddGroups,
       {{"month", View("user000", "month")}, EventForm()}},
  };
  return growths;
}

/// One size of what grows, in both engines, with a visitor of each.
class GrownCalendar {
 public:
  GrownCalendar(const Growth& growth, int size, const PostgresqlServer& server,
                const RegionalSettings& regional)
      : sqlite_(regional), postgresql_(regional) {
    const std::filesystem::path folder = ORLUNE_CALENDAR_FOLDER;
    const auto original = folder / "1000.db";
    MakeCalendarFile(original, 1'000, regional);
    const std::string name = "growth" + std::to_string(size);
    const auto file = folder / (name + ".db");
    for (const char* const suffix : {"", "-wal", "-shm"}) std::filesystem::remove(file.string() + suffix);
    std::filesystem::copy_file(original, file);
    {
      const auto database = sqlite_.Open(file.string());
      database->Begin();
      growth.Add(*database, regional, size);
      database->Commit();
    }
    server.MakeDatabase(name, file, regional);
    atFile_ = std::make_unique<Visitor>(sqlite_, file.string(), regional);
    atServer_ = std::make_unique<Visitor>(postgresql_, server.Address(name), regional);
  }

  Visitor& AtFile() { return *atFile_; }
  Visitor& AtServer() { return *atServer_; }

 private:
  SqliteDriver sqlite_;
  PostgresqlDriver postgresql_;
  std::unique_ptr<Visitor> atFile_;
  std::unique_ptr<Visitor> atServer_;
};

/// The costs of one page at one size.
struct Measured {
  int Size;
  std::vector<Cost> AtFile;
  std::vector<Cost> AtServer;
};

std::string Joined(const std::vector<double>& numbers) {
  std::ostringstream text;
  for (const double& number : numbers)
    text << (&number == numbers.data() ? "" : " / ") << std::setprecision(number < 100 ? 2 : 3) << number;
  return text.str();
}

/// The times of the sizes, and the time for each entry as a multiple of that of the size before.
void PrintEngine(const std::vector<Measured>& sizes, std::vector<Cost> Measured::*costs) {
  std::vector<double> milliseconds;
  std::vector<double> growths;
  for (const Measured& size : sizes) {
    const double time = MedianOf(size.*costs).Sum().count() / 1000;
    if (!milliseconds.empty())
      growths.push_back(time / size.Size / (milliseconds.back() / sizes[growths.size()].Size));
    milliseconds.push_back(time);
  }
  std::cout << " | " << Joined(milliseconds) << " ms | " << Joined(growths);
}

void Print(const std::string& name, const std::vector<Measured>& sizes) {
  std::cout << "| " << name << " | ";
  for (const Measured& size : sizes) std::cout << (&size == sizes.data() ? "" : " / ") << size.Size;
  PrintEngine(sizes, &Measured::AtFile);
  PrintEngine(sizes, &Measured::AtServer);
  std::cout << " |" << std::endl;
}

void Measure(const Growth& growth, const PostgresqlServer& server, const RegionalSettings& regional) {
  std::vector<std::unique_ptr<GrownCalendar>> calendars;
  for (const int size : growth.Sizes)
    calendars.push_back(std::make_unique<GrownCalendar>(growth, size, server, regional));
  for (const MeasuredPage& page : growth.Pages) {
    std::vector<Measured> sizes;
    for (std::size_t i = 0; i < calendars.size(); ++i) sizes.push_back({growth.Sizes[i], {}, {}});
    for (int round = 0; round < kRounds; ++round) {
      for (std::size_t i = 0; i < calendars.size(); ++i) {
        sizes[i].AtFile.push_back(MeasureRound(calendars[i]->AtFile(), page.Request, server));
        sizes[i].AtServer.push_back(MeasureRound(calendars[i]->AtServer(), page.Request, server));
      }
    }
    Print(page.Name + ", " + growth.Name, sizes);
  }
}

void Run(std::string_view only) {
  const RegionalSettings regional = LoadRegionalSettings("en_US");
  const PostgresqlServer server;
  std::cout
      << "Processor time of one page, of the node and the database together; \"growth\" is the time "
         "for each\n"
         "entry as a multiple of that at a tenth of the size.\n\n"
         "| page, what grows | sizes | SQLite | growth | PostgreSQL | growth |\n|---|--:|--:|--:|--:|--:|\n";
  for (const Growth& growth : Growths()) {
    if (growth.Name.starts_with(only)) Measure(growth, server, regional);
  }
}

}  // namespace
}  // namespace orlune::bench

int main(int argc, char** argv) {
  try {
    orlune::bench::Run(argc > 1 ? argv[1] : "");
    return 0;
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
