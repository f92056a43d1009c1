#include "support/calendar_fixture.h"
#include "support/page_text.h"

namespace orlune::testing {
namespace {

std::string DayNumber(std::string_view date, std::string_view number) {
  return "<FONT CLASS=\"daynumber\"><A HREF=\"/cal.asp?p=c&cd=" + std::string(date) +
         "&dm=day\" CLASS=\"daynumber\" TITLE=\"Day View\" " + Status("Day View") + ">" +
         std::string(number) + "</A></FONT>\r\n";
}

class Views : public CalendarFixture {
 protected:
  Views() {
    Run(Statement("INSERT INTO EventTypes (TypeName, FileName) VALUES ('Meeting', 'type_meeting.gif')"));
    LogIn("anna", "secret");
  }
  std::string Page(const std::string& query) { return Get(query).Body; }
};

TEST_F(Views, ShareTheirFrame) {
  configure_ = [](Orlune& page) { page.ShowTitle(true); };
  const std::string page = Page("dm=month");
  EXPECT_EQ(page.substr(0, page.find("<TABLE")),
            "<HTML><HEAD>\r\n<TITLE>Orlune v1.0.0</TITLE>\r\n"
            "<LINK REL=stylesheet HREF=\"css/dark.css\" TYPE=text/css>\r\n"
            "</HEAD><BODY>\r\n\r\n"
            "<FORM ACTION=\"/cal.asp\" NAME=\"acForm\">"
            "<P ALIGN=CENTER><FONT CLASS=\"calname\">Anna A</FONT>");
  EXPECT_NE(page.find("</TABLE></TD></TR>\r\n<TR CLASS=\"plain\"><TD><A HREF=\"https://orlune.example/\""),
            std::string::npos);
  EXPECT_TRUE(page.ends_with(">Logout anna</A></TD></TR></TABLE>\r\n</FORM>\r\n\r\n</BODY></HTML>"));

  const std::string empty = Page("dm=year");
  EXPECT_EQ(empty.substr(empty.find("</HEAD>")), "</HEAD><BODY>\r\n\r\n\r\n\r\n</BODY></HTML>");
}

TEST_F(Views, OfferTheNavigationThatTheUserMayUse) {
  const std::string open = "<TD ALIGN=RIGHT>&nbsp;";
  const std::string close = "</TD></TR>\r\n";
  const std::string find = Button("p=e&act=find", "Find Event", "event_find.gif");
  const std::string end =
      find + Button("p=m", "Message List", "msg_list.gif") + Button("p=p", "Preferences", "prefs.gif");
  EXPECT_EQ(Cut(Page("dm=month&cd=1/31/2004"), open, close),
            open + Button("cd=12/31/2003", "Previous Month", "cal_back.gif") +
                Button("cd=3/15/2004", "Today (3/15/2004)", "cal_today.gif") +
                Button("cd=2/29/2004", "Next Month", "cal_forward.gif") + "&nbsp;&nbsp;" +
                Button("p=e", "New Event", "event_new.gif") + end + close);
  Run(Statement("INSERT INTO Messages (Recipient, Viewed) VALUES ('ANNA', no)"));
  Run(Statement("INSERT INTO Messages (Recipient, Viewed) VALUES ('anna', yes)"));
  Run(Statement("INSERT INTO GroupViews (Name, FriendlyName, Calendars) VALUES ('team', 'Team', 'anna')"));
  const std::string group = Page("dm=week&cd=3/1/2004&cn=@team");
  EXPECT_NE(group.find(Button("cd=2/23/2004", "Previous Week", "cal_back.gif")), std::string::npos);
  EXPECT_NE(group.find(Button("p=m", "Message List (1 New)", "msg_newmail.gif")), std::string::npos);
  EXPECT_EQ(
      Cut(group, open + "<A", "</A>&nbsp;&nbsp;"),
      open +
          "<A HREF=\"javascript:void(0);\" onClick=\"javascript:window.open('/cal.asp?p=p&act=gcols', '', "
          "'width=180,height=250,left='+(screen.availWidth-210)+',top='+(screen.availHeight-280)+"
          "',scrollbars=1');\" TITLE=\"Show Colour Mapping\" " +
          Status("Show Colour Mapping") + ">Colours</A>&nbsp;&nbsp;");
  configure_ = [](Orlune& page) { page.NoMessaging(true); };
  EXPECT_EQ(Page("dm=day").find("p=m"), std::string::npos);
  LogIn("admin", "demo1");
  EXPECT_NE(Page("dm=day").find(Button("p=a", "Administration", "admin.gif")), std::string::npos);
}

TEST_F(Views, OfferDatesCalendarsAndViewsInTheLastRow) {
  Run(Statement("INSERT INTO GroupViews (Name, FriendlyName, Owner) VALUES ('z', 'Zoo', 'admin')"));
  Run(Statement(
      "INSERT INTO GroupViews (Name, FriendlyName, Owner) VALUES ('a', 'arts &#39;n&#39;', 'anna')"));
  Run(Statement("INSERT INTO GroupViews (Name, FriendlyName, Owner) VALUES ('b', 'Bens', 'ben')"));
  EXPECT_EQ(
      Cut(Page("dm=week&cn=anna"), "<TR><TD ALIGN=CENTER COLSPAN=7", "</TR>"),
      "<TR><TD ALIGN=CENTER COLSPAN=7 CLASS=\"captions\">Date:&nbsp;<INPUT TYPE=TEXT NAME=\"cd\" "
      "VALUE=\"3/15/2004\" "
      "SIZE=18>&nbsp;&nbsp;&nbsp;Calendar:&nbsp;<SELECT NAME=\"cn\"><OPTION VALUE=\"@a\">-arts &#39;n&#39;-"
      "<OPTION VALUE=\"@z\">-Zoo-<OPTION VALUE=\"anna\" SELECTED>Anna A<OPTION VALUE=\"default\">[Everybody]"
      "<OPTION VALUE=\"sales\">[Sales]<OPTION VALUE=\"staff\">[Staff]</SELECT>&nbsp;&nbsp;&nbsp;View:&nbsp;"
      "<SELECT NAME=\"dm\"><OPTION VALUE=\"day\">Day<OPTION VALUE=\"week\" SELECTED>Week<OPTION "
      "VALUE=\"month\">Month"
      "</SELECT>&nbsp;&nbsp;&nbsp;<INPUT TYPE=button VALUE=\"OK\" onClick=\"javascript:f=document.acForm;"
      "f.action='/cal.asp?'+f.cd.value+f.dm.options[f.dm.selectedIndex].value+"
      "f.cn.options[f.cn.selectedIndex].value;f.submit();\"></TD></TR>");
  LogIn("ben", "");
  EXPECT_NE(Page("").find("<OPTION VALUE=\"ben\" SELECTED>Ben B<OPTION VALUE=\"default\">"),
            std::string::npos);
}

TEST_F(Views, ShowAMonthInWholeWeeks) {
  const std::string page = Page("dm=month");
  EXPECT_EQ(
      Cut(page, "<TABLE WIDTH=100%", "</TR>\r\n"),
      "<TABLE WIDTH=100% ALIGN=CENTER CELLSPACING=0.5><TR><TD WIDTH=2% CLASS=\"captions\">&nbsp;</TD>\r\n"
      "<TD ALIGN=CENTER WIDTH=14% CLASS=\"captions\">Monday</TD>\r\n"
      "<TD ALIGN=CENTER WIDTH=14% CLASS=\"captions\">Tuesday</TD>\r\n"
      "<TD ALIGN=CENTER WIDTH=14% CLASS=\"captions\">Wednesday</TD>\r\n"
      "<TD ALIGN=CENTER WIDTH=14% CLASS=\"captions\">Thursday</TD>\r\n"
      "<TD ALIGN=CENTER WIDTH=14% CLASS=\"captions\">Friday</TD>\r\n"
      "<TD ALIGN=CENTER WIDTH=14% CLASS=\"captions\">Saturday</TD>\r\n"
      "<TD ALIGN=CENTER WIDTH=14% CLASS=\"captions\">Sunday</TD>\r\n</TR>\r\n");
  EXPECT_EQ(
      Cut(page, "<TR><TD ALIGN=CENTER CLASS=\"captions\"><BR><BR><A HREF=\"/cal.asp?dm=week&cd=3/29/2004\"",
          "</TR>\r\n"),
      "<TR><TD ALIGN=CENTER CLASS=\"captions\"><BR><BR><A HREF=\"/cal.asp?dm=week&cd=3/29/2004\" "
      "CLASS=\"captions\" TITLE=\"Show Week 14\" " +
          Status("Show Week 14") + ">14</A><BR><BR><BR></TD>\r\n<TD VALIGN=TOP>" +
          DayNumber("3/29/2004", "29") + "<BR>\r\n</TD>\r\n<TD VALIGN=TOP>" + DayNumber("3/30/2004", "30") +
          "<BR>\r\n</TD>\r\n<TD VALIGN=TOP>" + DayNumber("3/31/2004", "31") +
          "<BR>\r\n</TD>\r\n"
          "<TD VALIGN=TOP CLASS=\"off\"><FONT CLASS=\"daynumdim\">1</FONT></TD>\r\n"
          "<TD VALIGN=TOP CLASS=\"off\"><FONT CLASS=\"daynumdim\">2</FONT></TD>\r\n"
          "<TD VALIGN=TOP CLASS=\"off\"><FONT CLASS=\"daynumdim\">3</FONT></TD>\r\n"
          "<TD VALIGN=TOP CLASS=\"off\"><FONT CLASS=\"daynumdim\">4</FONT></TD>\r\n</TR>\r\n");
  EXPECT_NE(page.find("<TD VALIGN=TOP CLASS=\"today\">" + DayNumber("3/15/2004", "15")), std::string::npos);
  EXPECT_NE(page.find("<TD VALIGN=TOP CLASS=\"weekend\">" + DayNumber("3/14/2004", "14")), std::string::npos);

  const auto weekRows = [&](const std::string& query) {
    const std::string month = Page(query);
    std::size_t rows = 0;
    for (std::size_t at = month.find("?dm=week"); at != std::string::npos;
         at = month.find("?dm=week", at + 1))
      ++rows;
    return rows;
  };
  EXPECT_EQ(weekRows("cd=2/10/1999"), 4U) << "28 days from a Monday on";
  EXPECT_EQ(weekRows("cd=2/10/2004"), 5U);
  EXPECT_EQ(weekRows("cd=8/10/2004"), 6U);
  EXPECT_EQ(weekRows("cd=12/31/9999"), 5U);
  EXPECT_EQ(weekRows("cd=1/1/0100"), 5U);
  EXPECT_NE(Page("cd=1/1/0100").find("?dm=week&cd=1/1/0100\""), std::string::npos)
      << "no link leaves the known dates";
  EXPECT_NE(Page("dm=week&cd=1/1/0100").find("JAN&nbsp;0100"), std::string::npos);
  EXPECT_NE(Page("dm=week&cd=12/31/9999").find("DEC&nbsp;9999"), std::string::npos);
}

TEST_F(Views, ShowEventsWithTheirIconsAndALinkForThoseWhoMayChangeThem) {
  const int own = AddEvent("anna", "Talk &#39;n&#39; <i>tea</i> <script>",
                           "Type, BeginDate, BeginTime, EndTime, EventType, Comments",
                           "'none', '3/16/2004', '09:00', '10:30', 'Meeting', 'Room \"1\"'");
  AddEvent("staff", "Fair", "Type, BeginDate", "'none', '3/16/2004'");
  const std::string fair = "<IMG SRC=\"images/cal_redind.gif\" ALT=\"\">Fair";
  const std::string talk =
      "<IMG SRC=\"images/type_meeting.gif\" ALT=\"Room &quot;1&quot;\"><A HREF=\"/cal.asp?p=e&id=" +
      std::to_string(own) + "\" TITLE=\"Edit Event\" " + Status("Edit Event") +
      "><B>09:00-10:30</B> Talk &#39;n&#39; <i>tea</i> &lt;script></A>";
  EXPECT_EQ(Cut(Page("dm=month"), DayNumber("3/16/2004", "16"), "</TD>"),
            DayNumber("3/16/2004", "16") + "<BR>\r\n" + fair + "<BR>\r\n" + talk + "<BR>\r\n</TD>");
  EXPECT_EQ(Cut(Page("dm=week"), "<TD VALIGN=TOP HEIGHT=200>", "</TD>"),
            "<TD VALIGN=TOP HEIGHT=200>" + DayNumber("3/16/2004", "16") + "<BR><BR>\r\n" + fair + "<BR><BR>" +
                talk + "\r\n<BR><BR></TD>");
}

TEST_F(Views, PaintTheCalendarsOfAGroupView) {
  Run(
      Statement("INSERT INTO GroupViews (Name, Calendars, BackGround, ForeGround) "
                "VALUES ('team', 'ben, staff', '#FF0000, x;y', '#FFFFFF, #000000')"));
  AddEvent("ben", "A", "Type, BeginDate, BeginTime, Comments", "'none', '3/15/2004', '08:00', 'note'");
  AddEvent("staff", "B", "Type, BeginDate", "'none', '3/15/2004'");
  EXPECT_NE(
      Page("dm=month&cn=@team")
          .find(
              "ALT=\"note\"><FONT STYLE=\"background:#FF0000;color:#FFFFFF;\"><B>08:00</B> A</FONT><BR>\r\n"),
      std::string::npos);
  const std::string day = Page("dm=day");
  EXPECT_NE(day.find("CLASS=\"event\"><FONT STYLE=\"background:#FF0000;color:#FFFFFF;\"><P><B>08:00</B> "
                     "<B>A</B></FONT><BR>note</TD>"),
            std::string::npos);
  EXPECT_NE(day.find("CLASS=\"event\"><FONT STYLE=\"color:#000000;\"><P><B>B</B></FONT><BR>&nbsp;</TD>"),
            std::string::npos);
}

TEST_F(Views, NameAWeekByItsMonthsAndYears) {
  struct Case {
    const char* Date;
    const char* Caption;
  };
  for (const Case& c :
       {Case{"3/15/2004", "WEEK 12 - MAR&nbsp;2004"}, Case{"3/31/2004", "WEEK 14 - MAR/APR&nbsp;2004"},
        Case{"1/1/2004", "WEEK 1 - DEC&nbsp;2003/JAN&nbsp;2004"}}) {
    EXPECT_EQ(Cut(Page("dm=week&cd=" + std::string(c.Date)), "\"caltitle\">", "</FONT>"),
              "\"caltitle\">" + std::string(c.Caption) + "</FONT>");
  }
  EXPECT_EQ(Cut(Page("dm=day&cd=3/15/2004"), "\"caltitle\">", "</FONT>"),
            "\"caltitle\">MONDAY, MARCH 15, 2004</FONT>");
}

TEST_F(Views, PlaceTheEventsOfADaySideBySide) {
  Run(Statement("UPDATE Calendars SET DayBegin = 8, DayEnd = 10 WHERE Name = 'anna'"));
  const SqlLiteral columns("Type, BeginDate, BeginTime, EndTime, Comments");
  AddEvent("staff", "Early", columns, "'none', '3/15/2004', '06:00', '10:00', Null");
  AddEvent("staff", "Nine", columns, "'none', '3/15/2004', '09:00', '11:00', 'one\r\ntwo'");
  AddEvent("staff", "Untimed", columns, "'none', '3/15/2004', Null, Null, Null");
  const auto hour = [](std::string_view text) {
    return "<TR><TD VALIGN=TOP WIDTH=1% CLASS=\"captions\" NOWRAP>" + std::string(text) + "</TD>\r\n";
  };
  EXPECT_EQ(
      Cut(Page("dm=day"), "<TABLE ALIGN=CENTER WIDTH=100% CELLSPACING=0.5>",
          "<TR><TD ALIGN=CENTER COLSPAN=4 CLASS=\"captions\">Date"),
      "<TABLE ALIGN=CENTER WIDTH=100% CELLSPACING=0.5>\r\n"
      "<TR><TD ALIGN=CENTER COLSPAN=4 CLASS=\"captions\">Monday</TD></TR>\r\n" +
          hour("08:00") +
          "<TD VALIGN=TOP ROWSPAN=2 WIDTH=37% CLASS=\"event\"><P><B>06:00-10:00</B> <B>Early</B></TD>\r\n"
          "<TD WIDTH=75% VALIGN=TOP>&nbsp;</TD>\r\n"
          "<TD VALIGN=TOP ROWSPAN=3 WIDTH=24% CLASS=\"event\"><P><B>Untimed</B><BR>&nbsp;</TD>\r\n</TR>\r\n" +
          hour("09:00") +
          "<TD VALIGN=TOP ROWSPAN=2 WIDTH=37% CLASS=\"event\"><P><B>09:00-11:00</B> <B>Nine</B><BR>one<BR>two"
          "</TD>\r\n</TR>\r\n" +
          hour("10:00") +
          "<TD WIDTH=75% VALIGN=TOP>&nbsp;</TD>\r\n</TR>\r\n"
          "<TR><TD ALIGN=CENTER COLSPAN=4 CLASS=\"captions\">Date");
}

}  // namespace
}  // namespace orlune::testing
