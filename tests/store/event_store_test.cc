#include "store/event_store.h"

#include "store/event_reader.h"
#include "support/calendar_fixture.h"

namespace orlune::testing {
namespace {

class EventStore : public CalendarFixture {
 protected:
  static OL_Event Event(std::string_view type) {
    OL_Event event;
    event.EventName = "*12 \"O'Brien\"";
    event.Owner = "anna";
    event.Type = type;
    event.BeginDate = std::chrono::year{2004} / 3 / 15;
    event.EndDate = std::chrono::year{2004} / 4 / 15;
    event.BeginTime = std::chrono::minutes{9 * 60 + 30};
    event.RepeatWeekday = "2, 4";
    event.RepeatFrequency = "vko_1";
    event.RepeatDay = "31";
    event.RepeatWeekends = "vkl_ma";
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

  void Save(const OL_Event& event) { SaveEvent(*driver_.Open(databasePath_), regional_, event); }
};

TEST_F(EventStore, WritesTheColumnsOfEachKind) {
  struct Case {
    const char* Type;
    bool HasEnd;
    const char* Weekday;
    const char* Day;
  };
  int id = 0;
  for (const Case& c :
       {Case{"none", false, "", ""}, Case{"day", true, "", ""}, Case{"weekday", true, "2, 4vko_1", ""},
        Case{"month", true, "", "31vkl_ma"}, Case{"year", true, "", "31vkl_ma"}}) {
    Save(Event(c.Type));
    const OL_Event stored = Load(++id);
    EXPECT_EQ(stored.EventName, "*12 &quot;O&#39;Brien&quot;");
    EXPECT_EQ(stored.Comments, "*yes");
    EXPECT_EQ(stored.BeginTime, Event("none").BeginTime);
    EXPECT_FALSE(stored.EndTime);
    EXPECT_TRUE(stored.Private);
    EXPECT_EQ(stored.EndDate != stored.BeginDate, c.HasEnd) << c.Type;
    EXPECT_EQ(stored.RepeatWeekday + stored.RepeatFrequency, c.Weekday) << c.Type;
    EXPECT_EQ(stored.RepeatDay + stored.RepeatWeekends, c.Day) << c.Type;
  }
}

TEST_F(EventStore, TiesSuggestionsTogether) {
  const auto add = [&](std::string_view owner, std::string_view state, std::string_view suggId) {
    OL_Event event = Event("none");
    event.Owner = owner;
    event.SuggestState = state;
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
  SetSuggestState(*driver_.Open(databasePath_), "1", "BEN", "accepted");
  EXPECT_EQ(Load(2).SuggestState, "accepted");
  EXPECT_EQ(Load(3).SuggestState + Load(5).SuggestState, "undecidedundecided");

  DeleteEvents(*driver_.Open(databasePath_), "1, 3");
  EXPECT_EQ(Read(Statement("SELECT Count(EventID) AS Total FROM Events")), "3");
  for (const char* ids : {"", "1 OR 1=1", "1); DELETE FROM Events; --", "x"}) {
    EXPECT_THROW(DeleteEvents(*driver_.Open(databasePath_), ids), DatabaseError) << ids;
  }
}

}  // namespace
}  // namespace orlune::testing
