#include "pages/calendar/ol_events.h"

#include "base/dates.h"
#include "support/calendar_fixture.h"

namespace orlune::testing {
namespace {

using std::chrono::days;

class Occurrences : public CalendarFixture {
 protected:
  Occurrences() {
    visitor_.LoginName = "anna";
    visitor_.CalName = "anna";
    visitor_.MemberOfGroups = {"sales", "default"};
  }

  /// What a new request finds from `first` to `last`.
  OL_Events Load(Date first, Date last, std::string_view view = "") {
    database_ = driver_.Open(databasePath_);
    const Visit visit{context_, *database_, host_, host_, session_, surroundings_.Clock};
    OL_Events events(visit);
    events.View(view);
    events.GetEventsForPeriod(first, last);
    return events;
  }

  /// The occurrences of March 2004's days `first` to `last`, as "15 Lunch, 16 Lunch".
  std::string List(int first, int last) {
    OL_Events events = Load(March(first), March(last));
    std::string list;
    for (int day = first; day <= last; ++day) {
      events.GetEventsForDay(March(day));
      for (std::size_t i = 1; i <= events.DayCount(); ++i) {
        if (!list.empty()) list += ", ";
        list += std::to_string(day) + " " + events.EventsByDay(i)->EventName;
      }
    }
    return list;
  }

  static Date March(int day) { return std::chrono::year{2004} / 3 / day; }

  HostingPage hosting_;
  Visitor visitor_;
  PageContext context_{hosting_, visitor_, surroundings_.Regional, {}, false};
  SessionValues session_{hosting_, host_.Context(), {}};
  std::unique_ptr<Connection> database_;
};

TEST_F(Occurrences, FallOnTheDaysOfThePeriodOnly) {
  AddEvent("anna", "Before", "Type, BeginDate", "'none', '3/9/2004'");
  AddEvent("anna", "First", "Type, BeginDate", "'none', '3/10/2004'");
  AddEvent("anna", "Last", "Type, BeginDate, EndDate", "'none', '3/12/2004', '3/1/2004'");
  AddEvent("anna", "After", "Type, BeginDate", "'none', '3/13/2004'");
  AddEvent("anna", "Trip", "Type, BeginDate, EndDate", "'day', '3/11/2004', '3/20/2004'");
  AddEvent("anna", "Over", "Type, BeginDate, EndDate", "'day', '3/1/2004', '3/9/2004'");
  AddEvent("anna", "Weekly", "Type, BeginDate, EndDate, RepeatWeekday, RepeatFrequency",
           "'weekday', '3/3/2004', '3/31/2004', '4', 'vko_1'");
  AddEvent("anna", "Odd", "Type, BeginDate, EndDate", "'other', '3/1/2004', '3/31/2004'");
  EXPECT_EQ(List(10, 12), "10 First, 10 Weekly, 11 Trip, 12 Last, 12 Trip");
  EXPECT_EQ(List(21, 21), "");
}

TEST_F(Occurrences, OfAPeriodAreThoseOfItsHalves) {
  AddEvent("anna", "Daily", "Type, BeginDate, EndDate", "'day', '3/5/2004', '3/17/2004'");
  AddEvent("anna", "Monthly", "Type, BeginDate, EndDate, RepeatDay, RepeatWeekends",
           "'month', '1/1/2004', '12/31/2004', '13, 14, 31', 'vkl_ma'");
  AddEvent("sales", "Weekly", "Type, BeginDate, EndDate, RepeatWeekday, RepeatFrequency",
           "'weekday', '1/1/2004', '3/31/2004', '2, 6', 'vko_2'");
  const std::string whole = List(1, 31);
  for (int middle = 1; middle < 31; ++middle) EXPECT_EQ(List(1, middle) + ", " + List(middle + 1, 31), whole);
}

TEST_F(Occurrences, OfOneDayComeByTheirTimesThenAsTheyWereEntered) {
  AddEvent("anna", "Late", "Type, BeginDate, BeginTime", "'none', '3/15/2004', '14:00'");
  AddEvent("anna", "Untimed", "Type, BeginDate", "'none', '3/15/2004'");
  AddEvent("sales", "Early", "Type, BeginDate, BeginTime", "'none', '3/15/2004', '09:30 AM'");
  AddEvent("anna", "Early too", "Type, BeginDate, BeginTime", "'none', '3/15/2004', '09:30'");
  EXPECT_EQ(List(15, 15), "15 Untimed, 15 Early, 15 Early too, 15 Late");
}

TEST_F(Occurrences, LeaveOutOpenSuggestionsAndOthersPrivateEvents) {
  const SqlLiteral columns("Type, BeginDate, Private, SuggestState");
  AddEvent("anna", "undecided", columns, "'none', '3/15/2004', no, 'undecided'");
  AddEvent("anna", "declined", columns, "'none', '3/15/2004', no, 'declined'");
  AddEvent("anna", "accepted", columns, "'none', '3/15/2004', no, 'accepted'");
  AddEvent("anna", "sent", columns, "'none', '3/15/2004', no, '-'");
  AddEvent("anna", "secret", columns, "'none', '3/15/2004', yes, Null");
  AddEvent("sales", "group secret", columns, "'none', '3/15/2004', yes, Null");
  AddEvent("staff", "elsewhere", columns, "'none', '3/15/2004', no, Null");
  EXPECT_EQ(List(15, 15), "15 accepted, 15 sent, 15 secret, 15 group secret");

  visitor_.LoginName = "ANNA";
  EXPECT_EQ(List(15, 15), "15 accepted, 15 sent, 15 secret, 15 group secret");
  visitor_.LoginName = "ben";
  EXPECT_EQ(List(15, 15), "15 accepted, 15 sent");
  visitor_.LoginName = "";
  visitor_.CalName = "";
  EXPECT_EQ(List(15, 15), "");
}

TEST_F(Occurrences, OfAGroupViewCarryTheirMembersColours) {
  Run(
      Statement("INSERT INTO GroupViews (FriendlyName, Name, Owner, Calendars, BackGround, ForeGround) "
                "VALUES ('Team', 'team', 'admin', 'anna, ben, anna', '#FF0000, , #00FF00', '#FFFFFF')"));
  AddEvent("anna", "A", "Type, BeginDate", "'none', '3/15/2004'");
  AddEvent("ben", "B", "Type, BeginDate", "'none', '3/15/2004'");
  AddEvent("default", "D", "Type, BeginDate", "'none', '3/15/2004'");
  visitor_.CalName = "@team";

  EXPECT_EQ(
      OL_Events(Visit{context_, *database_, host_, host_, session_, surroundings_.Clock}).EventsByDay(1),
      nullptr);
  const OL_Events events = Load(March(15), March(15));
  ASSERT_EQ(events.Count(), 3U);
  EXPECT_EQ(events.Item(1).BackGround + events.Item(1).ForeGround, "#FF0000#FFFFFF");
  EXPECT_EQ(events.Item(2).BackGround + events.Item(2).ForeGround, "");
  EXPECT_EQ(events.Item(3).BackGround, "");
}

TEST_F(Occurrences, OfTheSpecialViewsComeFromEverybody) {
  AddEvent("ben", "Away", "Type, BeginDate, EventType", "'none', '3/15/2004', 'loma'");
  AddEvent("julkaisut", "Published", "Type, BeginDate", "'none', '3/15/2004'");
  const OL_Events absences = Load(March(1), March(31), "lomat");
  ASSERT_EQ(absences.Count(), 1U);
  EXPECT_EQ(absences.Item(1).EventName, "Away");
  const OL_Events published = Load(March(1), March(31), "julkaisut");
  ASSERT_EQ(published.Count(), 1U);
  EXPECT_EQ(published.Item(1).EventName, "Published");
}

TEST_F(Occurrences, ReachTheEndOfTheKnownDates) {
  AddEvent("anna", "Forever", "Type, BeginDate, EndDate", "'day', '12/30/9999', '12/31/9999'");
  EXPECT_EQ(Load(kLastDate - days{6}, kLastDate).Count(), 2U);
}

}  // namespace
}  // namespace orlune::testing
