#include "calendar_file.h"

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <vector>

#include "base/dates.h"
#include "commands/init.h"
#include "drivers/engines/database_engines.h"
#include "drivers/sqlite/sqlite_driver.h"
#include "store/event_store.h"
#include "store/statement.h"

namespace orlune::bench {
namespace {

using std::chrono::days;

constexpr int kUsers = 290;
constexpr int kVisibleUsers = 22;
constexpr std::array<std::string_view, 8> kGroups{"sales",   "staff",   "board", "kitchen",
                                                  "drivers", "archive", "choir", "library"};
constexpr std::array<std::string_view, 4> kShownOwners{kUser, "sales", "staff", "default"};
constexpr std::array<std::string_view, 5> kEventTypes{"", "Meeting", "Phone Call", "Travel", "Training"};
constexpr int kMessages = 2000;
constexpr int kUnreadMessages = 5;
constexpr int kRowsPerTransaction = 50'000;

const Date kFirstShownDay = kToday - days{DayOfMonth(kToday) - 1};
const Date kLastShownDay = LastDayOfMonth(kToday);

std::string Padded(int number, std::size_t digits) {
  const std::string text = std::to_string(number);
  return std::string(digits - std::min(digits, text.size()), '0') + text;
}

std::string UserName(int number) {
  return "user" + Padded(number, 3);
}

/// Random numbers that are the same on every machine; those of the standard distributions are not.
class Dice {
 public:
  /// 0 to `sides` - 1.
  int Roll(int sides) { return static_cast<int>(engine_() % static_cast<unsigned>(sides)); }

 private:
  std::mt19937 engine_;
};

TimeOfDay HalfPast(int hour) {
  return std::chrono::hours{hour} + std::chrono::minutes{30};
}

OL_Event Event(std::string_view owner, const std::string& name, Date begin, int number) {
  OL_Event event;
  event.EventName = name;
  event.Owner = owner;
  event.BeginDate = begin;
  event.EventType = kEventTypes[static_cast<std::size_t>(number) % kEventTypes.size()];
  event.Comments = "Room " + std::to_string(number % 40) + ", bring the papers of the last meeting along.";
  if (number % 4 == 0) return event;
  event.BeginTime = HalfPast(8 + number % 9);
  event.EndTime = HalfPast(9 + number % 9);
  return event;
}

OL_Event Repeating(OL_Event event, Repetition type, Date end) {
  event.Type = type;
  event.EndDate = end;
  return event;
}

OL_Event OnWeekdays(OL_Event event, std::string_view weekdays, Date end) {
  event = Repeating(std::move(event), Repetition::kByWeekday, end);
  event.RepeatWeekday = weekdays;
  event.RepeatFrequency = Frequency::kEveryWeek;
  return event;
}

/// 60 occurrences: 39 single ones, and 21 of five series.
std::vector<OL_Event> ShownEvents() {
  std::vector<OL_Event> events;
  const auto add = [&](std::string_view owner, Date begin) -> OL_Event& {
    const int number = static_cast<int>(events.size());
    return events.emplace_back(
        Event(owner, std::string(kShownTitle) + std::to_string(number), begin, number));
  };
  const Date lastYear = kFirstShownDay - days{300};
  const Date nextYear = kLastShownDay + days{200};
  for (int i = 0; i < 26; ++i) add(kUser, kFirstShownDay + days{i});
  for (int i = 0; i < 6; ++i) add("sales", kFirstShownDay + days{5 * i});
  for (int i = 0; i < 5; ++i) add("staff", kFirstShownDay + days{6 * i});
  for (int i = 0; i < 2; ++i) add("default", kFirstShownDay + days{15 * i});
  OL_Event& mondays = add(kUser, lastYear);
  mondays = OnWeekdays(mondays, "2", nextYear);
  OL_Event& tuesdaysAndThursdays = add("staff", lastYear);
  tuesdaysAndThursdays = OnWeekdays(tuesdaysAndThursdays, "3, 5", nextYear);
  OL_Event& fiveDays = add("sales", kToday);
  fiveDays = Repeating(fiveDays, Repetition::kDaily, kToday + days{4});
  OL_Event& payday = add("default", lastYear);
  payday = Repeating(payday, Repetition::kMonthly, nextYear);
  payday.RepeatDay = "25";
  OL_Event& birthday = add(kUser, AddMonths(kToday, -36));
  birthday = Repeating(birthday, Repetition::kYearly, nextYear);
  return events;
}

bool TouchesShownMonth(const OL_Event& event) {
  return event.BeginDate <= kLastShownDay && std::max(event.BeginDate, event.EndDate) >= kFirstShownDay;
}

std::string AnyOwner(Dice& dice) {
  const int number = dice.Roll(kUsers + static_cast<int>(kGroups.size()) + 1);
  if (number < kUsers) return UserName(number);
  if (number == kUsers) return "default";
  return std::string(kGroups[static_cast<std::size_t>(number - kUsers - 1)]);
}

OL_Event AnyEvent(Dice& dice, int number) {
  const std::string owner = AnyOwner(dice);
  const bool isShown = std::find(kShownOwners.begin(), kShownOwners.end(), owner) != kShownOwners.end();
  for (;;) {
    const Date begin = kToday + days{dice.Roll(10 * 365 + 200) - 10 * 365};
    OL_Event event = Event(owner, "Event " + std::to_string(number), begin, number);
    if (dice.Roll(10) == 0) {
      const std::string weekday = std::to_string(WeekdayNumber(begin));
      event = OnWeekdays(std::move(event), weekday, begin + days{7 * (1 + dice.Roll(52))});
    }
    if (!isShown || !TouchesShownMonth(event)) return event;
  }
}

std::string CalendarTitle(std::string_view name) {
  return "Calendar of " + std::string(name);
}

void AddUser(Connection& database, const std::string& name, bool isHidden) {
  database.Execute(
      Statement("INSERT INTO Calendars (Name, FriendlyName, Password, IsGroup, IsHidden, MemberOfGroups, "
                "ClockMode, FirstDayOfWeek, Weekend) "
                "VALUES ('{}', '{}', '{}', no, {}, 'sales, staff', 24, 2, '1, 7')",
                name, CalendarTitle(name), kPassword, isHidden ? "yes" : "no"));
}

void AddCalendars(Connection& database) {
  for (int i = 0; i < kUsers; ++i) AddUser(database, UserName(i), i >= kVisibleUsers);
  for (const std::string_view group : kGroups) {
    database.Execute(Statement(
        "INSERT INTO Calendars (Name, FriendlyName, IsGroup, IsHidden) VALUES ('{}', '{}', yes, no)", group,
        CalendarTitle(group)));
  }
}

void AddGroupViews(Connection& database) {
  for (int i = 0; i < 40; ++i) {
    database.Execute(Statement(
        "INSERT INTO GroupViews (FriendlyName, Name, Owner, Calendars, BackGround, ForeGround) "
        "VALUES ('View {}', 'view{}', '{}', 'user001, user002, user003', '#FFEEDD, , ', 'black, black, ')",
        i, i, i == 0 ? "admin" : UserName(i / 3)));
  }
}

struct Message {
  std::string Sender;
  std::string Recipient;
  DateTime SentDate;
  std::string Subject;
  bool IsViewed;
};

void AddMessage(Connection& database, const RegionalSettings& regional, const Message& message) {
  database.Execute(
      Statement("INSERT INTO Messages (Sender, Recipient, SentDate, Subject, Content, Viewed) "
                "VALUES ('{}', '{}', '{}', '{}', 'See you there.', {})",
                message.Sender, message.Recipient, FormatDateTime(regional, message.SentDate),
                message.Subject, message.IsViewed ? "yes" : "no"));
}

void AddMessages(Connection& database, const RegionalSettings& regional) {
  for (int i = 0; i < kMessages; ++i) {
    AddMessage(database, regional,
               {UserName((i + 1) % kUsers),
                UserName(i % kUsers),
                {kToday - days{i % 100}, std::chrono::hours{9}},
                "Message " + std::to_string(i),
                i >= kUnreadMessages * kUsers});
  }
}

/// Spreads the shown events over the file, as when they are entered day by day.
void AddEvents(Connection& database, const RegionalSettings& regional, int eventCount) {
  const std::vector<OL_Event> shown = ShownEvents();
  const int distance = eventCount / static_cast<int>(shown.size());
  Dice dice;
  std::size_t nextShown = 0;
  for (int i = 0; i < eventCount; ++i) {
    const bool isTurn = i % distance == distance - 1 && nextShown < shown.size();
    SaveEvent(database, regional, isTurn ? shown[nextShown++] : AnyEvent(dice, i), {});
    if (i % kRowsPerTransaction != kRowsPerTransaction - 1) continue;
    database.Commit();
    database.Begin();
  }
}

}  // namespace

void MakeCalendarFile(const std::filesystem::path& file, int eventCount, const RegionalSettings& regional) {
  if (std::filesystem::exists(file)) return;
  std::filesystem::create_directories(std::filesystem::absolute(file).parent_path());
  const std::filesystem::path unfinished = file.string() + ".unfinished";
  std::filesystem::remove(unfinished);
  DatabaseEngines engines(regional);
  InitDatabase(engines.Named(DatabaseAddress::Parse(unfinished)), {std::string(kPassword), false, kToday},
               regional);
  {
    SqliteDriver driver(regional);
    const auto database = driver.Open(unfinished.string());
    database->Begin();
    AddCalendars(*database);
    AddGroupViews(*database);
    AddMessages(*database, regional);
    AddEvents(*database, regional, eventCount);
    database->Commit();
  }
  std::filesystem::rename(unfinished, file);
}

void AddReceivedMessages(const std::filesystem::path& file, int count, const RegionalSettings& regional,
                         std::string_view user) {
  SqliteDriver driver(regional);
  const auto database = driver.Open(file.string());
  database->Begin();
  for (int i = 0; i < count; ++i) {
    AddMessage(*database, regional,
               {UserName(1 + i % (kUsers - 1)),
                std::string(user),
                {kToday - days{i % 1000}, std::chrono::minutes{i % 1440}},
                "Minutes of meeting " + std::to_string(i),
                i % 20 != 0});
  }
  database->Commit();
}

void AddVisibleUsers(const std::filesystem::path& file, int count, const RegionalSettings& regional) {
  SqliteDriver driver(regional);
  const auto database = driver.Open(file.string());
  database->Begin();
  for (int i = 0; i < count; ++i) AddUser(*database, UserName(kUsers + i), false);
  database->Commit();
}

}  // namespace orlune::bench
