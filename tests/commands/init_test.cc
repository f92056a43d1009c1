#include "commands/init.h"

#include <map>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "drivers/engines/database_engines.h"
#include "drivers/icu/icu_regional_settings.h"
#include "drivers/spliced.h"
#include "model/ol_event.h"
#include "store/event_reader.h"
#include "store/field.h"
#include "store/statement.h"
#include "support/test_database.h"

namespace orlune {
namespace {

using std::chrono::year;

constexpr Date kToday = year{2004} / 3 / 15;

class InitDatabaseTest : public ::testing::Test {
 protected:
  std::string Init(bool demo, std::optional<std::string> password = {}, Date today = kToday) {
    DatabaseEngines engines(regional_);
    return InitDatabase(engines.Named(DatabaseAddress::Parse(place_.Path())),
                        {std::move(password), demo, today}, regional_);
  }

  /// The first fields of all rows, as texts.
  std::multiset<std::string> Read(const std::string& query) {
    const auto database = driver_->Open(place_.Path());
    const auto rows = database->Query(testing::Spliced(query, {}));
    std::multiset<std::string> texts;
    while (rows->Next()) texts.emplace(TextOf(rows->Get(0)));
    return texts;
  }
  std::map<int, OL_Event> Events() {
    const auto database = driver_->Open(place_.Path());
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
  using Texts = std::multiset<std::string>;
};

TEST_F(InitDatabaseTest, HoldsWhatTheFirstLoginNeeds) {
  const std::string password = Init(false);
  EXPECT_GE(password.size(), 12U);
  EXPECT_EQ(password.find_first_of("0O1lI"), std::string::npos) << password;
  EXPECT_EQ(Read("SELECT Password FROM Calendars WHERE Name = 'admin' AND IsGroup = no"), Texts{password});
  EXPECT_EQ(Read("SELECT SheetFile FROM Calendars INNER JOIN StyleSheets ON Calendars.StyleSheet = "
                 "StyleSheets.SheetID WHERE Name = 'admin' AND ClockMode = 24 AND FirstDayOfWeek = 2 AND "
                 "StartMode = 'month' AND Weekend = '1, 7' AND IsHidden = yes"),
            Texts{"default.css"});
  EXPECT_EQ(Read("SELECT FriendlyName FROM Calendars WHERE Name = 'default' AND IsGroup = yes"),
            Texts{"Everybody"});
  EXPECT_EQ(Read("SELECT SheetFile FROM StyleSheets").size(), 5U);
  EXPECT_EQ(Read("SELECT FileName FROM EventTypes WHERE FileName LIKE 'type_%.gif'").size(), 10U);
  EXPECT_EQ(Read("SELECT EventName FROM Events"), Texts{});
}

TEST_F(InitDatabaseTest, PasswordIsTheGivenOneOrRandom) {
  const std::string first = Init(false);
  place_.Clear();
  EXPECT_NE(Init(false), first);
  place_.Clear();
  EXPECT_EQ(Init(true, "it's-mine"), "it's-mine");
  EXPECT_EQ(Read("SELECT Password FROM Calendars WHERE Name = 'admin'"), Texts{"it's-mine"});
  place_.Clear();
  EXPECT_EQ(Init(true), "demo1");
  EXPECT_EQ(Read("SELECT Name FROM Calendars WHERE IsGroup = no AND Password <> 'demo1'"), Texts{});
}

TEST_F(InitDatabaseTest, LeavesNothingBehindOnFailure) {
  for (const char* password : {"", "two words"}) EXPECT_THROW(Init(false, password), std::runtime_error);
  regional_.ShortDateSeparator = 'x';  // such dates cannot be parsed: writing the demo fails half-way
  EXPECT_THROW(Init(true), std::runtime_error);
  EXPECT_TRUE(place_.IsEmpty());
  regional_.ShortDateSeparator = '/';
  Init(false, "first");
  EXPECT_THROW(Init(true, "second"), std::runtime_error);
  EXPECT_EQ(Read("SELECT Password FROM Calendars WHERE Name = 'admin'"), Texts{"first"});
}

TEST_F(InitDatabaseTest, DemoShowsEveryKindOfEvent) {
  Init(true);
  for (const char* event : {"Type = 'none'",
                            "Type = 'day'",
                            "Type = 'weekday'",
                            "Type = 'month'",
                            "Type = 'year'",
                            "RepeatFrequency = 'vko_1'",
                            "RepeatFrequency = 'vko_2'",
                            "RepeatFrequency = 'vko_3'",
                            "RepeatFrequency = 'kk_1'",
                            "RepeatFrequency = 'kk_2'",
                            "RepeatFrequency = 'kk_3'",
                            "RepeatFrequency = 'kk_4'",
                            "RepeatWeekends = 'vkl_ok'",
                            "RepeatWeekends = 'vkl_no'",
                            "RepeatWeekends = 'vkl_ma'",
                            "RepeatWeekends = 'vkl_pe'",
                            "SuggestState = '-'",
                            "SuggestState = 'undecided'",
                            "SuggestState = 'accepted'",
                            "SuggestState = 'declined'",
                            "Private = yes",
                            "Comments LIKE '%\r\n%'"})
    EXPECT_NE(Read(std::string("SELECT EventName FROM Events WHERE ") + event), Texts{}) << event;
  EXPECT_NE(Read("SELECT Subject FROM Messages WHERE Recipient = 'admin' AND Viewed = no"), Texts{});
  EXPECT_NE(Read("SELECT Name FROM Calendars WHERE Name = 'walter' AND IsHidden = yes"), Texts{});
}

TEST_F(InitDatabaseTest, DemoEventsAreStoredAsByTheEventPages) {
  Init(true);
  const Texts types = Read("SELECT TypeName FROM EventTypes");
  const std::map<int, OL_Event> events = Events();
  for (const auto& [id, event] : events) {
    SCOPED_TRACE(event.EventName);
    EXPECT_FALSE(event.EventName.empty());
    EXPECT_EQ((event.EventName + event.Comments).find_first_of("'\"{}"), std::string::npos) << event.Comments;
    EXPECT_TRUE(event.EventType.empty() || types.contains(event.EventType)) << event.EventType;
    EXPECT_TRUE(event.Type == Repetition::kNone || event.BeginDate < event.EndDate);
    EXPECT_TRUE(!event.EndTime || event.BeginTime < event.EndTime);
    EXPECT_EQ(event.Type == Repetition::kByWeekday,
              !event.RepeatWeekday.empty() && event.RepeatFrequency.has_value());
    EXPECT_EQ(event.Type == Repetition::kMonthly, !event.RepeatDay.empty());
    EXPECT_TRUE(event.SuggID.empty() ||
                events.at(std::stoi(event.SuggID)).SuggestState == SuggestionState::kSent);
  }
}

TEST_F(InitDatabaseTest, DemoFillsTheMonthsAroundAnyDayAndIsTheSameForOneDay) {
  for (const Date today : {kToday, Date{year{2024} / 2 / 29}, Date{year{2025} / 12 / 31}}) {
    SCOPED_TRACE(today.time_since_epoch().count());
    Init(true, {}, today);
    std::map<std::string, int> aroundToday;
    for (const auto& [id, event] : Events()) {
      const auto distance = event.BeginDate - today;
      if (event.Type == Repetition::kNone && abs(distance) <= std::chrono::days{15})
        ++aroundToday[event.Owner];
    }
    EXPECT_EQ(aroundToday.size(), 14U);
    for (const auto& [owner, count] : aroundToday) EXPECT_TRUE(count >= 6 && count <= 40) << owner << count;
    const Texts titles = Read("SELECT EventName FROM Events");
    place_.Clear();
    Init(true, {}, today);
    EXPECT_EQ(Read("SELECT EventName FROM Events"), titles);
    place_.Clear();
  }
}

}  // namespace
}  // namespace orlune
