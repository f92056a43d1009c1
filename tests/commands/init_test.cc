#include "commands/init.h"

#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "base/lists.h"
#include "drivers/engines/database_engines.h"
#include "drivers/icu/icu_regional_settings.h"
#include "model/ol_event.h"
#include "store/event_reader.h"
#include "store/field.h"
#include "store/statement.h"
#include "support/test_database.h"

namespace orlune {
namespace {

using std::chrono::year;

class InitDatabaseTest : public ::testing::Test {
 protected:
  explicit InitDatabaseTest(testing::Engine engine = testing::EngineUnderTest()) : place_(engine) {}

  std::string Init(Date today, bool demo, std::optional<std::string> password = {}) {
    DatabaseEngines engines(regional_);
    return InitDatabase(engines.Named(DatabaseAddress::Parse(Path())), {std::move(password), demo, today},
                        regional_);
  }
  const std::string& Path() const { return place_.Path(); }

  std::string Read(const Statement& query) {
    const auto database = driver_->Open(Path());
    const auto rows = database->Query(query);
    return rows->Next() ? std::string(TextOf(rows->Get(0))) : "(none)";
  }
  int Count(const Statement& query) {
    const auto database = driver_->Open(Path());
    const auto rows = database->Query(query);
    return rows->Next() ? NumberOf(rows->Get(rows->Column("N"))).value_or(-1) : -1;
  }
  std::set<std::string> Names(const Statement& query) {
    const auto database = driver_->Open(Path());
    const auto rows = database->Query(query);
    std::set<std::string> names;
    while (rows->Next()) names.emplace(TextOf(rows->Get(0)));
    return names;
  }
  std::map<int, OL_Event> Events() {
    const auto database = driver_->Open(Path());
    const auto rows = database->Query(Statement("SELECT * FROM Events"));
    const EventReader reader(*rows);
    std::map<int, OL_Event> events;
    while (rows->Next()) {
      const OL_Event event = reader.Read(*rows);
      events.emplace(event.EventID, event);
    }
    return events;
  }

  RegionalSettings regional_ = LoadRegionalSettings("en_US");
  testing::DatabasePlace place_;
  std::unique_ptr<DatabaseDriver> driver_ = place_.MakeDriver(regional_);
};

class InitFileTest : public InitDatabaseTest {
 protected:
  InitFileTest() : InitDatabaseTest(testing::Engine::kSqlite) {}
  std::filesystem::path Folder() const { return std::filesystem::path(Path()).parent_path(); }
};

TEST_F(InitDatabaseTest, HoldsWhatTheFirstLoginNeeds) {
  const std::string password = Init(year{2004} / 3 / 15, false);
  EXPECT_GE(password.size(), 12U);
  EXPECT_EQ(password.find_first_of("0O1lI"), std::string::npos) << password;
  EXPECT_EQ(Read(Statement("SELECT Password FROM Calendars WHERE Name = 'admin' AND IsGroup = no")),
            password);
  EXPECT_EQ(
      Read(Statement("SELECT SheetFile FROM Calendars INNER JOIN StyleSheets ON Calendars.StyleSheet = "
                     "StyleSheets.SheetID WHERE Name = 'admin' AND ClockMode = 24 AND FirstDayOfWeek = 2 AND "
                     "StartMode = 'month' AND Weekend = '1, 7' AND IsHidden = yes")),
      "default.css");
  EXPECT_EQ(Read(Statement("SELECT FriendlyName FROM Calendars WHERE Name = 'default' AND IsGroup = yes")),
            "Everybody");
  EXPECT_EQ(Count(Statement("SELECT Count(SheetID) AS N FROM StyleSheets")), 4);
  EXPECT_EQ(Count(Statement("SELECT Count(TypeID) AS N FROM EventTypes WHERE FileName LIKE 'type_%.gif'")),
            10);
  EXPECT_EQ(Count(Statement("SELECT Count(EventID) AS N FROM Events")), 0);
}

TEST_F(InitDatabaseTest, PasswordIsTheOneGivenOrANewOneEachTime) {
  const std::string first = Init(year{2004} / 3 / 15, false);
  place_.Clear();
  EXPECT_NE(Init(year{2004} / 3 / 15, false), first);
  place_.Clear();
  EXPECT_EQ(Init(year{2004} / 3 / 15, true, "it's-mine"), "it's-mine");
  EXPECT_EQ(Read(Statement("SELECT Password FROM Calendars WHERE Name = 'admin'")), "it's-mine");
  place_.Clear();
  EXPECT_EQ(Init(year{2004} / 3 / 15, true), "demo1");
  EXPECT_EQ(Count(Statement("SELECT Count(CalendarID) AS N FROM Calendars WHERE IsGroup = no AND Password <> "
                            "'demo1'")),
            0);
}

TEST_F(InitFileTest, NobodyButTheOwnerMayReadTheFiles) {
  using std::filesystem::perms;
  Init(year{2004} / 3 / 15, false);
  const auto database = driver_->Open(Path());
  database->Execute(Statement("UPDATE Calendars SET FriendlyName = 'x' WHERE Name = 'admin'"));
  int files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(Folder())) {
    ++files;
    EXPECT_EQ(entry.status().permissions(), perms::owner_read | perms::owner_write) << entry.path();
  }
  EXPECT_EQ(files, 3);
}

TEST_F(InitFileTest, NeverTouchesAFileThatExists) {
  std::ofstream(Path()) << "precious";
  EXPECT_THROW(Init(year{2004} / 3 / 15, false), std::runtime_error);
  std::ifstream file(Path());
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), "precious");
}

TEST_F(InitDatabaseTest, RefusesADatabaseThatIsThere) {
  Init(year{2004} / 3 / 15, false, "first");
  EXPECT_THROW(Init(year{2004} / 3 / 15, true, "second"), std::runtime_error);
  EXPECT_EQ(Read(Statement("SELECT Password FROM Calendars WHERE Name = 'admin'")), "first");
}

TEST_F(InitDatabaseTest, LeavesNothingBehindWhenItFails) {
  for (const char* password : {"", "two words"}) {
    EXPECT_THROW(Init(year{2004} / 3 / 15, false, password), std::runtime_error);
  }
  // Dates parted so cannot be read back, and the demo fails half way.
  regional_.ShortDateSeparator = 'x';
  EXPECT_THROW(Init(year{2004} / 3 / 15, true), std::runtime_error);
  EXPECT_TRUE(place_.IsEmpty());
}

TEST_F(InitFileTest, NeedsItsFolder) {
  const auto path = Folder() / "missing" / "calendar.db";
  DatabaseEngines engines(regional_);
  EXPECT_THROW(InitDatabase(engines.Named(DatabaseAddress::Parse(path)), {}, regional_), std::runtime_error);
  EXPECT_TRUE(place_.IsEmpty());
}

TEST_F(InitDatabaseTest, DemoShowsEveryKindOfEvent) {
  Init(year{2004} / 3 / 15, true);
  for (const char* type : {"none", "day", "weekday", "month", "year"}) {
    EXPECT_GT(Count(Statement("SELECT Count(EventID) AS N FROM Events WHERE Type = '{}'", type)), 0) << type;
  }
  for (const char* frequency : {"vko_1", "vko_2", "vko_3", "kk_1", "kk_2", "kk_3", "kk_4"}) {
    EXPECT_GT(
        Count(Statement("SELECT Count(EventID) AS N FROM Events WHERE RepeatFrequency = '{}'", frequency)), 0)
        << frequency;
  }
  for (const char* weekends : {"vkl_ok", "vkl_no", "vkl_ma", "vkl_pe"}) {
    EXPECT_GT(
        Count(Statement("SELECT Count(EventID) AS N FROM Events WHERE RepeatWeekends = '{}'", weekends)), 0)
        << weekends;
  }
  for (const char* state : {"-", "undecided", "accepted", "declined"}) {
    EXPECT_GT(Count(Statement("SELECT Count(EventID) AS N FROM Events WHERE SuggestState = '{}'", state)), 0)
        << state;
  }
  EXPECT_GT(Count(Statement("SELECT Count(EventID) AS N FROM Events WHERE Private = yes")), 0);
  EXPECT_GT(Count(Statement("SELECT Count(EventID) AS N FROM Events WHERE Comments LIKE '%\r\n%'")), 0);
  EXPECT_GT(Count(Statement(
                "SELECT Count(MessageID) AS N FROM Messages WHERE Recipient = 'admin' AND Viewed = no")),
            0);
  EXPECT_EQ(Count(Statement(
                "SELECT Count(CalendarID) AS N FROM Calendars WHERE Name = 'walter' AND IsHidden = yes")),
            1);
}

TEST_F(InitDatabaseTest, DemoEventsAreSuchAsTheEventPagesStore) {
  Init(year{2004} / 3 / 15, true);
  const std::set<std::string> calendars = Names(Statement("SELECT Name FROM Calendars"));
  const std::set<std::string> types = Names(Statement("SELECT TypeName FROM EventTypes"));
  const std::map<int, OL_Event> events = Events();
  for (const auto& [id, event] : events) {
    SCOPED_TRACE(event.EventName);
    EXPECT_FALSE(event.EventName.empty());
    EXPECT_EQ((event.EventName + event.Comments).find_first_of("'\"{}"), std::string::npos) << event.Comments;
    EXPECT_TRUE(calendars.contains(event.Owner)) << event.Owner;
    EXPECT_TRUE(event.EventType.empty() || types.contains(event.EventType)) << event.EventType;
    EXPECT_TRUE(event.Type == "none" || event.BeginDate < event.EndDate);
    EXPECT_TRUE(!event.EndTime || event.BeginTime < event.EndTime);
    EXPECT_EQ(event.Type == "weekday", !event.RepeatWeekday.empty() && !event.RepeatFrequency.empty());
    EXPECT_EQ(event.Type == "month", !event.RepeatDay.empty());
    EXPECT_EQ(event.Type == "month" || event.Type == "year", !event.RepeatWeekends.empty());
    EXPECT_TRUE(event.SuggID.empty() || events.at(std::stoi(event.SuggID)).SuggestState == "-")
        << event.SuggID;
  }
}

TEST_F(InitDatabaseTest, DemoGroupViewsHaveColoursForEachMember) {
  Init(year{2004} / 3 / 15, true);
  const std::set<std::string> calendars = Names(Statement("SELECT Name FROM Calendars"));
  const auto database = driver_->Open(Path());
  const auto rows = database->Query(Statement("SELECT Calendars, BackGround, ForeGround FROM GroupViews"));
  int views = 0;
  for (; rows->Next(); ++views) {
    const std::vector<std::string> members = SplitList(TextOf(rows->Get(0)));
    for (const std::string& member : members) EXPECT_TRUE(calendars.contains(member)) << member;
    EXPECT_EQ(SplitList(TextOf(rows->Get(1))).size(), members.size());
    EXPECT_EQ(SplitList(TextOf(rows->Get(2))).size(), members.size());
  }
  EXPECT_GT(views, 1);
}

TEST_F(InitDatabaseTest, DemoFillsTheMonthsAroundAnyDayAndIsTheSameForOneDay) {
  const auto titles = [this] {
    std::string all;
    for (const auto& [id, event] : Events()) all += event.EventName + '|' + event.Owner + '\n';
    return all;
  };
  for (const Date today :
       {Date{year{2004} / 3 / 15}, Date{year{2024} / 2 / 29}, Date{year{2025} / 12 / 31}}) {
    SCOPED_TRACE(today.time_since_epoch().count());
    Init(today, true);
    std::map<std::string, int> aroundToday;
    for (const auto& [id, event] : Events()) {
      const auto distance = event.BeginDate - today;
      if (event.Type == "none" && abs(distance) <= std::chrono::days{15}) ++aroundToday[event.Owner];
    }
    EXPECT_EQ(aroundToday.size(), 14U);
    for (const auto& [owner, count] : aroundToday) EXPECT_TRUE(count >= 6 && count <= 40) << owner << count;

    const std::string first = titles();
    place_.Clear();
    Init(today, true);
    EXPECT_EQ(titles(), first);
    place_.Clear();
  }
}

}  // namespace
}  // namespace orlune
