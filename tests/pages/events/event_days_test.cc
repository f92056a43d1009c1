#include "support/calendar_fixture.h"
#include "support/page_text.h"

namespace orlune::testing {
namespace {

/// Days that no rule says, as devices leave them behind.
class EventDays : public CalendarFixture {
 protected:
  EventDays() {
    configure_ = [](Orlune& page) { page.Sharing(true); };
    LogIn("anna", "secret");
    const SqlLiteral columns("Type, BeginDate, EndDate, BeginTime, RepeatWeekday, RepeatFrequency");
    AddEvent("anna", "Choir", columns, "'listed', '3/2/2004', '4/20/2004', '06:00', Null, Null");
    AddEvent("anna", "Run", columns, "'day', '3/1/2004', '3/31/2004', Null, Null, Null");
    AddEvent("sales", "Call", columns, "'weekday', '3/1/2004', '3/31/2004', Null, '2', 'vko_1'");
    AddDays(1, "listed", {"3/2/2004", "3/17/2004", "3/19/2004", "4/20/2004"});
    AddDays(1, "left out", {"3/19/2004"});
    AddDays(2, "left out", {"3/16/2004"});
    AddDays(3, "left out", {"3/15/2004", "3/22/2004"});
  }

  void AddDays(int event, const char* role, std::initializer_list<const char*> days) {
    for (const char* day : days)
      Run(Statement("INSERT INTO EventDays (EventID, EventDay, Role) VALUES ({}, '{}', '{}')", event, day,
                    role));
  }
  std::vector<std::string> Days(int event) {
    return ReadRows(
        Statement("SELECT EventDay, Role FROM EventDays WHERE EventID = {} ORDER BY EventDay", event),
        {"EventDay", "Role"});
  }
  static int Count(const std::string& text, const std::string& part) {
    int count = 0;
    for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += part.size()) ++count;
    return count;
  }
  const std::string& Save(const char* id, FakeHost::Fields form) {
    form.insert({{"id", id}, {"calendar", "anna"}, {"time1", "- - - -"}, {"time2", "- - - -"}});
    return Post("p=e&act=save", form).RedirectedTo;
  }
  using Texts = std::vector<std::string>;
};

TEST_F(EventDays, AreShownOnlyByPagesThatShare) {
  struct Case {
    const char* Query;
    const char* Shared;
    const char* Alone;
  };
  for (const Case& c :
       {Case{"dm=week&cd=3/17/2004", "1 Choir, 6 Run, 0 Call", "0 Choir, 7 Run, 1 Call"},
        Case{"dm=month&cd=3/17/2004", "2 Choir, 30 Run, 3 Call", "0 Choir, 31 Run, 5 Call"}}) {
    for (const bool isShared : {true, false}) {
      configure_ = [isShared](Orlune& page) { page.Sharing(isShared); };
      const std::string page = Get(c.Query).Body;
      const std::string shown = std::to_string(Count(page, "Choir")) + " Choir, " +
                                std::to_string(Count(page, "Run")) + " Run, " +
                                std::to_string(Count(page, "Call")) + " Call";
      EXPECT_EQ(shown, isShared ? c.Shared : c.Alone) << c.Query;
    }
  }
}

TEST_F(EventDays, CountAmongTheHiddenHoursAndInTheSearch) {
  host_.PathInfo = "/hours";
  EXPECT_EQ(Get("date=3/17/2004&calendar=anna").Body, R"({"earlier":1,"later":0})");
  EXPECT_EQ(Get("date=3/19/2004&calendar=anna").Body, R"({"earlier":0,"later":0})");
  host_.PathInfo = "";
  const std::string found =
      Post("p=e&act=results", {{"search", "c"}, {"cal", ""}, {"type", ""}, {"date1", "1/1/2004"}}).Body;
  EXPECT_EQ(Cut(found, "<OPTION VALUE=\"3/2/", "</SELECT>"),
            "<OPTION VALUE=\"3/2/2004\">Tue 3/2/2004\r\n<OPTION VALUE=\"3/17/2004\">Wed 3/17/2004\r\n"
            "<OPTION VALUE=\"4/20/2004\">Tue 4/20/2004\r\n</SELECT>");
  EXPECT_EQ(Count(found, "Mon 3/22/2004"), 0);
}

TEST_F(EventDays, StayWithAnEventWhoseFormIsSaved) {
  const std::string form = Get("p=e&id=1").Body;
  EXPECT_NE(form.find("<OPTION VALUE=\"listed\" SELECTED>Listed Days</SELECT>"), std::string::npos);
  EXPECT_NE(form.find("VALUE=\"3/2/2004\" SIZE=18 READONLY>"), std::string::npos);
  EXPECT_EQ(Count(Get("p=e&id=2").Body, "\"listed\""), 0);
  const Texts days = Days(1);
  Save("1", {{"title", "Sing"}, {"reptype", "listed"}, {"date1", "1/1/2005"}, {"date2", "x"}});
  EXPECT_EQ(Days(1), days);
  EXPECT_EQ(ReadRows(Statement("SELECT * FROM Events WHERE EventID = 1"),
                     {"EventName", "Type", "BeginDate", "EndDate"}),
            Texts{"Sing|listed|2004-03-02|2004-04-20"});
  Save("", {{"title", "New"}, {"reptype", "listed"}, {"date1", "3/2/2004"}});
  EXPECT_EQ(Read(Statement("SELECT Type FROM Events WHERE EventName = 'New'")), "none");
}

TEST_F(EventDays, AreDroppedWhenANewRuleSaysNothingAboutThem) {
  struct Case {
    const char* Name;
    const char* Event;
    FakeHost::Fields Form;
    Texts Days;
  };
  const std::vector<Case> cases{
      {"same rule",
       "3",
       {{"reptype", "weekday"},
        {"date1", "3/1/2004"},
        {"date2", "3/31/2004"},
        {"repweekday", "2"},
        {"frequency", "vko_1"}},
       {"2004-03-15|left out", "2004-03-22|left out"}},
      {"ends earlier",
       "3",
       {{"reptype", "weekday"},
        {"date1", "3/1/2004"},
        {"date2", "3/20/2004"},
        {"repweekday", "2, 3"},
        {"frequency", "vko_1"}},
       {"2004-03-15|left out"}},
      {"another weekday",
       "3",
       {{"reptype", "weekday"},
        {"date1", "3/1/2004"},
        {"date2", "3/31/2004"},
        {"repweekday", "3"},
        {"frequency", "vko_1"}},
       {}},
      {"one day", "2", {{"reptype", "none"}, {"date1", "3/16/2004"}}, {}},
      {"listed to daily",
       "1",
       {{"reptype", "day"}, {"date1", "3/1/2004"}, {"date2", "3/31/2004"}},
       {"2004-03-19|left out"}},
  };
  for (const Case& c : cases) {
    FakeHost::Fields form = c.Form;
    form["title"] = "T";
    Save(c.Event, form);
    Texts days = Days(std::stoi(c.Event));
    for (std::string& day : days) day.erase(10, day.find('|') - 10);
    EXPECT_EQ(days, c.Days) << c.Name;
  }
}

}  // namespace
}  // namespace orlune::testing
