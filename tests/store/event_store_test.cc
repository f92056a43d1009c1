#include "store/event_store.h"

#include "store/event_reader.h"
#include "store/suggestions.h"
#include "support/calendar_fixture.h"

namespace orlune::testing {
namespace {

class EventStore : public CalendarFixture {
 protected:
  static OL_Event Event(Repetition type) {
    OL_Event event;
    event.EventName = "*12 \"O'Brien\"";
    event.Owner = "anna";
    event.Type = type;
    event.BeginDate = std::chrono::year{2004} / 3 / 15;
    event.EndDate = std::chrono::year{2004} / 4 / 15;
    event.BeginTime = std::chrono::minutes{9 * 60 + 30};
    event.RepeatWeekday = "2, 4";
    event.RepeatFrequency = Frequency::kEveryWeek;
    event.RepeatDay = "31";
    event.RepeatWeekends = WeekendRule::kMoveForward;
    event.Private = true;
    event.Comments = "*yes";
    return event;
  }

  OL_Event Load(int id) {
    const auto connection = driver_.Open(databasePath_);
    const auto rows = connection->Query(Statement("SELECT * FROM Events WHERE (EventID = {})", id));
    const EventReader reader(*rows);
    EXPECT_TRUE(rows->Next());
    return reader.Read(*rows);
  }

  const std::vector<std::string> own_{"anna"};
  void Save(const OL_Event& event) { SaveEvent(*driver_.Open(databasePath_), regional_, event, own_); }
};

TEST_F(EventStore, WritesTheColumnsOfEachKind) {
  struct Case {
    Repetition Type;
    const char* Row;
  };
  int id = 0;
  for (const Case& c : {Case{Repetition::kNone, "none|Null|Null|Null|Null|Null"},
                        Case{Repetition::kDaily, "day|2004-04-15|Null|Null|Null|Null"},
                        Case{Repetition::kByWeekday, "weekday|2004-04-15|2, 4|vko_1|Null|Null"},
                        Case{Repetition::kMonthly, "month|2004-04-15|Null|Null|31|vkl_ma"},
                        Case{Repetition::kYearly, "year|2004-04-15|Null|Null|31|vkl_ma"}}) {
    Save(Event(c.Type));
    const OL_Event stored = Load(++id);
    EXPECT_EQ(stored.EventName, "*12 &quot;O&#39;Brien&quot;");
    EXPECT_EQ(stored.Comments, "*yes");
    EXPECT_EQ(stored.BeginTime, Event(c.Type).BeginTime);
    EXPECT_FALSE(stored.EndTime);
    EXPECT_TRUE(stored.Private);
    const auto rows =
        ReadRows(Statement("SELECT * FROM Events WHERE EventID = {}", id),
                 {"Type", "EndDate", "RepeatWeekday", "RepeatFrequency", "RepeatDay", "RepeatWeekends"});
    EXPECT_EQ(rows, std::vector<std::string>{c.Row});
  }
}

TEST_F(EventStore, LinksTheCopiesOfASuggestion) {
  const auto add = [&](std::string_view owner, std::string_view state, std::string_view suggId) {
    OL_Event event = Event(Repetition::kNone);
    event.Owner = owner;
    event.SuggestState = SuggestionStateOf(state).value();
    event.SuggID = suggId;
    Save(event);
  };
  EXPECT_EQ(FindNewestSenderCopy(*driver_.Open(databasePath_)), std::nullopt);
  add("anna", "-", "");
  add("ben", "undecided", "1");
  add("sales", "undecided", "1");
  add("anna", "-", "");
  add("ben", "undecided", "4");
  EXPECT_EQ(FindNewestSenderCopy(*driver_.Open(databasePath_)), 4);
  StoreAnswer(*driver_.Open(databasePath_), 1, "BEN", SuggestionState::kAccepted);
  EXPECT_EQ(Load(2).SuggestState, SuggestionState::kAccepted);
  EXPECT_EQ(Load(3).SuggestState, SuggestionState::kUndecided);
  EXPECT_EQ(Load(5).SuggestState, SuggestionState::kUndecided);

  DeleteEvents(*driver_.Open(databasePath_), "1, 2, 3", std::vector<std::string>{"ANNA", "sales"});
  EXPECT_EQ(Read(Statement("SELECT Count(EventID) AS Total FROM Events")), "3");
  for (const char* ids : {"", "1 OR 1=1", "1); DELETE FROM Events; --", "x"}) {
    EXPECT_THROW(DeleteEvents(*driver_.Open(databasePath_), ids, own_), DatabaseError) << ids;
  }
}

}  // namespace
}  // namespace orlune::testing
