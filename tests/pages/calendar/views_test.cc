#include "support/calendar_fixture.h"
#include "support/golden_page.h"
#include "support/page_text.h"

namespace orlune::testing {
namespace {

class Views : public CalendarFixture {
 protected:
  Views() {
    Run(Statement("INSERT INTO EventTypes (TypeName, FileName) VALUES ('Meeting', 'type_meeting.gif')"));
    Run(Statement("UPDATE Calendars SET DayBegin = 8, DayEnd = 10"));
    Run(Statement("INSERT INTO Messages (Recipient, Viewed) VALUES ('ANNA', no)"));
    Run(Statement("INSERT INTO Messages (Recipient, Viewed) VALUES ('anna', yes)"));
    const SqlLiteral view(
        "INSERT INTO GroupViews (Name, FriendlyName, Owner, Calendars, BackGround, ForeGround)");
    Run(Statement("{} VALUES ('z', 'Zoo', 'admin', 'ben, anna', '#FF0000, x;y, #0000FF', '#FFFFFF, #000000')",
                  view));
    Run(Statement("{} VALUES ('a', 'arts &#39;n&#39;', 'anna', '', '', '')", view));
    Run(Statement("{} VALUES ('b', 'Bens', 'ben', '', '', '')", view));

    const SqlLiteral columns("Type, BeginDate, BeginTime, EndTime, EventType, Comments");
    AddEvent("anna", "Talk &#39;n&#39; <i>tea</i> <script>", columns,
             "'none', '3/16/2004', '09:00', '10:30', 'Meeting', 'Room \"1\"'");
    AddEvent("staff", "Fair", columns, "'none', '3/16/2004', Null, Null, 'gone', Null");
    AddEvent("staff", "Early", columns, "'none', '3/15/2004', '06:00', '10:00', Null, Null");
    AddEvent("sales", "Nine", columns, "'none', '3/15/2004', '09:00', '11:00', Null, 'one\r\ntwo'");
    AddEvent("staff", "Untimed", columns, "'none', '3/15/2004', Null, Null, Null, 'note'");
    AddEvent("default", "Holidays", "Type, BeginDate, EndDate", "'day', '3/30/2004', '4/2/2004'");
    AddEvent("ben", "Ride", columns, "'none', '3/15/2004', '08:00', Null, Null, 'note'");
    LogIn("anna", "secret");
  }
  std::string Page(const std::string& query) { return Get(query).Body; }
};

TEST_F(Views, ShowACalendar) {
  configure_ = [](Orlune& page) { page.ShowTitle(true); };
  for (const std::string mode : {"day", "week", "month"})
    EXPECT_TRUE(IsGoldenPage("calendar/" + mode, Page("dm=" + mode)));
  const std::string unknown = Page("dm=year");
  EXPECT_EQ(unknown.substr(unknown.find("</HEAD>")), "</HEAD><BODY>\r\n\r\n\r\n\r\n</BODY></HTML>");
}

TEST_F(Views, ShowAGroupViewInTheColoursOfItsMembers) {
  for (const std::string mode : {"day", "week"})
    EXPECT_TRUE(IsGoldenPage("calendar/group_view_" + mode, Page("cn=@z&dm=" + mode)));
  configure_ = [](Orlune& page) { page.ShowTitle(true); };
  EXPECT_NE(Page("").find("<FONT CLASS=\"calname\">Zoo</FONT>"), std::string::npos);
}

TEST_F(Views, OfferOnlyWhatTheUserMayUse) {
  configure_ = [](Orlune& page) { page.NoMessaging(true); };
  EXPECT_EQ(Page("dm=day").find("p=m"), std::string::npos);
  LogIn("admin", "demo1");
  EXPECT_NE(Page("dm=day").find(Button("p=a", "Administration", "admin.gif")), std::string::npos);
  LogIn("ben", "");
  EXPECT_NE(Page("").find("<OPTION VALUE=\"ben\" SELECTED>Ben B<OPTION VALUE=\"default\">"),
            std::string::npos)
      << "a hidden calendar is offered to its owner";
}

TEST_F(Views, StepToTheLastDayOfAShorterMonth) {
  const std::string page = Page("dm=month&cd=1/31/2004");
  EXPECT_NE(page.find(Button("cd=12/31/2003", "Previous Month", "cal_back.gif")), std::string::npos);
  EXPECT_NE(page.find(Button("cd=2/29/2004", "Next Month", "cal_forward.gif")), std::string::npos);
}

TEST_F(Views, ShowAMonthInWholeWeeks) {
  struct Case {
    const char* Date;
    std::size_t Rows;
  };
  for (const Case& c : {Case{"2/10/1999", 4}, Case{"2/10/2004", 5}, Case{"8/10/2004", 6},
                        Case{"12/31/9999", 5}, Case{"1/1/0100", 5}}) {
    const std::string month = Page("dm=month&cd=" + std::string(c.Date));
    std::size_t rows = 0;
    for (std::size_t at = 0; (at = month.find("?dm=week", at)) != std::string::npos; ++at) ++rows;
    EXPECT_EQ(rows, c.Rows) << c.Date;
  }
  EXPECT_NE(Page("cd=1/1/0100").find("?dm=week&cd=1/1/0100\""), std::string::npos)
      << "no link leaves the known dates";
}

TEST_F(Views, NameAWeekByItsMonthsAndYears) {
  struct Case {
    const char* Date;
    const char* Caption;
  };
  for (const Case& c :
       {Case{"3/31/2004", "WEEK 14 - MAR/APR&nbsp;2004"},
        Case{"1/1/2004", "WEEK 1 - DEC&nbsp;2003/JAN&nbsp;2004"}, Case{"1/1/0100", "WEEK 53 - JAN&nbsp;0100"},
        Case{"12/31/9999", "WEEK 52 - DEC&nbsp;9999"}}) {
    EXPECT_EQ(Cut(Page("dm=week&cd=" + std::string(c.Date)), "\"caltitle\">", "</FONT>"),
              "\"caltitle\">" + std::string(c.Caption) + "</FONT>");
  }
}

}  // namespace
}  // namespace orlune::testing
