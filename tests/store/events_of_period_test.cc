#include "store/event_store.h"
#include "support/calendar_fixture.h"

namespace orlune::testing {
namespace {

class EventsOfAPeriod : public CalendarFixture {
 protected:
  /// The names of the events that may occur on 10 to 12 March 2004.
  std::string Names(std::string_view view = "") {
    const auto database = driver_.Open(databasePath_);
    const std::vector<std::string> owners{"ANNA", "it's", "sales"};
    const auto march = [](int day) { return Date{std::chrono::year{2004} / 3 / day}; };
    std::string names;
    for (const OL_Event& event :
         Ask(*database, EventsOfPeriod(regional_, view, owners, march(10), march(12))))
      names += (names.empty() ? "" : ", ") + event.EventName;
    return names;
  }
};

TEST_F(EventsOfAPeriod, AreOrderedByTimeThenByNumber) {
  const SqlLiteral columns("Type, BeginDate, EndDate, BeginTime");
  AddEvent("anna", "Late", columns, "'none', '3/10/2004', '3/1/2004', '14:00'");
  AddEvent("anna", "Untimed", columns, "'none', '3/12/2004', Null, Null");
  AddEvent("sales", "Early", columns, "'none', '3/11/2004', Null, '09:30 AM'");
  AddEvent("anna", "Early too", columns, "'none', '3/11/2004', Null, '09:30'");
  AddEvent("anna", "Before", columns, "'none', '3/9/2004', '3/31/2004', Null");
  AddEvent("anna", "After", columns, "'none', '3/13/2004', Null, Null");
  AddEvent("anna", "Begins", columns, "'day', '3/12/2004', '3/20/2004', '15:00'");
  AddEvent("anna", "Ends", columns, "'month', '3/1/2004', '3/10/2004', '15:00'");
  AddEvent("anna", "Over", columns, "'day', '3/1/2004', '3/9/2004', Null");
  AddEvent("anna", "Later", columns, "'day', '3/13/2004', '3/31/2004', Null");
  AddEvent("ben", "Elsewhere", columns, "'none', '3/11/2004', Null, Null");
  EXPECT_EQ(Names(), "Untimed, Early, Early too, Late, Begins, Ends");
}

TEST_F(EventsOfAPeriod, ComeFromAllCalendarsInTheSpecialViews) {
  const SqlLiteral columns("Type, BeginDate, EventType");
  AddEvent("anna", "Lunch", columns, "'none', '3/11/2004', Null");
  AddEvent("ben", "Holiday", columns, "'none', '3/11/2004', 'loma'");
  AddEvent("staff", "Away", columns, "'none', '3/11/2004', 'poissaolo'");
  AddEvent("julkaisut", "Published", columns, "'none', '3/11/2004', Null");
  EXPECT_EQ(Names("lomat"), "Holiday, Away");
  EXPECT_EQ(Names("julkaisut"), "Published");
}

}  // namespace
}  // namespace orlune::testing
