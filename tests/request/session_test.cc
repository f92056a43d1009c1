#include "request/visitor_loading.h"
#include "support/calendar_fixture.h"

namespace orlune::testing {
namespace {

using LoginPage = CalendarFixture;

TEST_F(LoginPage, StandsBeforeEveryPage) {
  const Answer& answer = Get("p=e");
  EXPECT_TRUE(answer.IsUncached);
  EXPECT_EQ(
      answer.Body,
      "<HTML><HEAD>\r\n"
      "<TITLE>Orlune v1.0.0</TITLE>\r\n"
      "<LINK REL=stylesheet HREF=\"css/default.css\" TYPE=text/css>\r\n"
      "</HEAD><BODY onLoad=\"javascript:document.forms[0].Name.focus();\">\r\n"
      "\r\n"
      "<FORM METHOD=post ACTION=\"/cal.asp?p=l\"><TABLE ALIGN=CENTER>\r\n"
      "<TR CLASS=\"plain\"><TD><FONT CLASS=\"caltitle\">CALENDAR LOGIN</FONT></TD>"
      "<TD ALIGN=RIGHT>&nbsp;</TD></TR>\r\n"
      "<TR><TD COLSPAN=2 CLASS=\"background\">\r\n"
      "<TABLE CELLSPACING=0.5 ALIGN=CENTER WIDTH=100%><TR><TD>"
      "<TABLE WIDTH=100% CELLSPACING=10 ALIGN=CENTER>"
      "<TR><TD ALIGN=RIGHT>Name:</TD><TD><INPUT TYPE=TEXT SIZE=18 NAME=\"Name\" VALUE=\"\"></TD></TR>"
      "<TR><TD ALIGN=RIGHT>Password:</TD><TD><INPUT TYPE=PASSWORD SIZE=18 NAME=\"Passwd\"></TD></TR>"
      "<TR><TD ALIGN=CENTER CLASS=\"captions\"><INPUT TYPE=submit VALUE=\"Login\"></TD></TR></TABLE>\r\n"
      "</TD></TR>\r\n"
      "<TR CLASS=\"plain\"><TD><A HREF=\"https://orlune.example/\" STYLE=\"text-decoration:none; "
      "font-size: 8pt\" TARGET=\"_new\" TITLE=\"Go To Orlune Site\" "
      "onMouseOver=\"javascript:window.status='Go To Orlune Site'; return true;\" "
      "onMouseOut=\"javascript:window.status=''; return true;\">Orlune v1.0.0</A></TD>"
      "<TD ALIGN=RIGHT><A HREF=\"/cal.asp?p=l\" TITLE=\"End Session\" "
      "onMouseOver=\"javascript:window.status='End Session'; return true;\" "
      "onMouseOut=\"javascript:window.status=''; return true;\">Logout ?</A></TD></TR></TABLE>\r\n"
      "</FORM>\r\n\r\n</BODY></HTML>");
}

TEST_F(LoginPage, SaysWhatIsWrongAfterThePageFoot) {
  struct Case {
    const char* Name;
    const char* Password;
    const char* Alert;
    const char* Focus;
  };
  const std::vector<Case> cases{
      {"nobody", "x", "alert('Incorrect username.\\n');", "forms[0].Name.focus"},
      {"sales", "", "alert('Incorrect username.\\n');", "forms[0].Name.focus"},
      {"x' OR '1'='1", "x", "alert('Incorrect username.\\n');", "forms[0].Name.focus"},
      {"anna", "Secret", "alert('Incorrect password.\\n');", "forms[0].Passwd.focus"},
      {"anna", "-*-", "alert('Incorrect password.\\n');", "forms[0].Passwd.focus"},
      {"anna", "", "alert('Incorrect password.\\n');", "forms[0].Passwd.focus"},
  };
  for (const Case& c : cases) {
    const Answer& answer = Post("p=l", {{"Name", c.Name}, {"Passwd", c.Password}});
    const std::size_t foot = answer.Body.find("</BODY></HTML>");
    EXPECT_LT(foot, answer.Body.find(c.Alert)) << c.Name;
    EXPECT_NE(answer.Body.find(c.Alert), std::string::npos) << c.Name;
    EXPECT_NE(answer.Body.find(c.Focus), std::string::npos) << c.Name;
    EXPECT_NE(answer.Body.find("VALUE=\"" + std::string(c.Name) + "\""), std::string::npos) << c.Name;
    EXPECT_EQ(host_.Get("Login"), "");
  }
  EXPECT_NE(Post("p=l", {{"Name", "\"><script>"}}).Body.find("VALUE=\"&quot;><script>\""), std::string::npos);
}

TEST_F(LoginPage, LogsInByTheStoredName) {
  EXPECT_EQ(Post("p=l", {{"Name", "ANNA"}, {"Passwd", "secret"}}).RedirectedTo, "/cal.asp?p=c");
  EXPECT_EQ(host_.Get("Login"), "anna");
  EXPECT_EQ(host_.Get("Calendar"), "anna");
  EXPECT_EQ(host_.Get("CurrentDate"), "3/15/2004");
  EXPECT_EQ(host_.Get("DisplayMode"), "");
  LogIn("ben", "whatever");
  EXPECT_EQ(host_.Get("Login"), "ben") << "an account without a password takes any";
}

TEST_F(LoginPage, LetsTheHostingPageNameTheUser) {
  configure_ = [](Orlune& page) {
    page.LoginName("anna");
    page.CalName("[!sales]");
  };
  EXPECT_EQ(Get("p=c&dm=week&cd=3/1/2004").RedirectedTo, "/cal.asp?p=c&dm=week&cd=3/1/2004");
  EXPECT_EQ(host_.Get("Login"), "anna");
  EXPECT_EQ(host_.Get("Calendar"), "");
  EXPECT_NE(Get("").Body.find("<OPTION VALUE=\"sales\" SELECTED>[Sales]"), std::string::npos);
}

TEST_F(LoginPage, LeavesForTheExitOnlyAfterASession) {
  configure_ = [](Orlune& page) { page.ExitToURL("/bye"); };
  EXPECT_EQ(Get("p=l").RedirectedTo, "");
  LogIn("anna", "secret");
  EXPECT_EQ(Get("p=l").RedirectedTo, "/bye");
  EXPECT_EQ(host_.Get("Login") + host_.Get("Calendar") + host_.Get("CurrentDate"), "");
  LogIn("anna", "secret");
  EXPECT_EQ(Post("p=l", {{"Name", "ben"}, {"Passwd", ""}}).RedirectedTo, "/cal.asp?p=c");
  EXPECT_EQ(host_.Get("Login"), "ben");
}

TEST_F(LoginPage, KeepsTheSessionInACookieWhenTold) {
  configure_ = [](Orlune& page) { page.UseCookie(true); };
  LogIn("anna", "secret");
  EXPECT_EQ(host_.Cookie["Login"], "anna");
  EXPECT_EQ(host_.CookiePath, "/cal.asp");
  EXPECT_FALSE(host_.IsCookieDropped);
  EXPECT_TRUE(host_.SessionValues.empty());

  EXPECT_NE(Get("dm=month").Body.find("WEEK 12"), std::string::npos)
      << "a new view takes effect with the next request";
  EXPECT_NE(Get("").Body.find("MARCH 2004"), std::string::npos);
  Get("p=l");
  EXPECT_TRUE(host_.Cookie.empty());
  EXPECT_TRUE(host_.IsCookieDropped);
}

class RequestState : public CalendarFixture {
 protected:
  /// The visitor of a request by `login` with the query parameters `query`.
  Visitor Load(const std::string& login, FakeHost::Fields query) {
    host_.SessionValues = {{"Login", login}};
    host_.StartRequest(std::move(query), {}, "");
    const HostingPage hosting;
    SessionValues session(hosting, host_.Context(), Now().Day);
    const auto database = driver_.Open(databasePath_);
    View view = Navigate(hosting, host_, surroundings_, session);
    invalidDate_ = view.InvalidDate;
    return LoadVisitor(hosting, host_.Context(), surroundings_, session, *database, std::move(view)).Visitor;
  }
  using Names = std::vector<std::string>;

  DateTime Now() const { return surroundings_.Clock.Now(); }

  std::string invalidDate_;
};

TEST_F(RequestState, FallsBackToTheOwnCalendar) {
  Run(Statement("INSERT INTO GroupViews (Name, Calendars) VALUES ('team', 'anna, ben')"));
  EXPECT_EQ(Load("anna", {{"cn", "@team"}}).CalName, "@team");
  EXPECT_EQ(Load("anna", {{"cn", "\u00C4team"}}).CalName, "\u00C4team")
      << "the first character, not its first byte";
  EXPECT_EQ(Load("anna", {{"cn", "@nobody"}}).CalName, "anna");
  EXPECT_EQ(Load("anna", {{"cn", "nobody"}}).CalName, "anna");
  EXPECT_EQ(host_.Get("Calendar"), "anna");
  EXPECT_EQ(Load("anna", {{"cn", "' OR ''='"}}).CalName, "anna");
}

TEST_F(RequestState, EndsTheLoginOfAnAccountThatIsGone) {
  LogIn("anna", "secret");
  Run(Statement("UPDATE Calendars SET Name = 'anne' WHERE Name = 'anna'"));
  EXPECT_EQ(Post("p=m&act=send", {{"Vastaanottaja", "ben"}, {"Otsikko", "s"}, {"Sisalto", "c"}}).RedirectedTo,
            "/cal.asp");
  EXPECT_EQ(Read(Statement("SELECT Subject FROM Messages")), "(none)");
  EXPECT_NE(Get("").Body.find("CALENDAR LOGIN"), std::string::npos);
}

TEST_F(RequestState, RejectsInvalidDates) {
  Visitor visitor = Load("anna", {{"cd", "3/45/2004"}});
  EXPECT_EQ(invalidDate_, "3/45/2004");
  EXPECT_EQ(visitor.CurrentDate, Now().Day);
  visitor = Load("anna", {{"cd", "2004-02-29"}});
  EXPECT_EQ(invalidDate_, "");
  EXPECT_EQ(visitor.CurrentDate, Date{std::chrono::year{2004} / 2 / 29});
}

TEST_F(RequestState, HoldsTheUsersSettings) {
  Visitor visitor = Load("ben", {});
  EXPECT_EQ(visitor.FirstDayOfWeek, 1);
  EXPECT_EQ(visitor.TimeFormat, "Hh:Nn AM/PM");
  EXPECT_EQ(visitor.DisplayMode, "day");
  EXPECT_EQ(visitor.DayBegin * 100 + visitor.DayEnd, 916);
  EXPECT_EQ(visitor.SheetFile, "dark.css");

  Run(Statement("UPDATE StyleSheets SET SheetFile = 'gone.css'"));
  Run(Statement(
      "UPDATE Calendars SET StartMode = Null, DayBegin = Null, FirstDayOfWeek = 9 WHERE Name = 'ben'"));
  visitor = Load("ben", {});
  EXPECT_EQ(visitor.SheetFile, "default.css");
  EXPECT_EQ(visitor.DisplayMode, "month");
  EXPECT_EQ(visitor.DayBegin, 6);
  EXPECT_EQ(visitor.FirstDayOfWeek, 2);

  visitor = Load("", {});
  EXPECT_EQ(visitor.DayBegin, 8) << "without a login the administrator's settings count";
  Run(Statement("DELETE FROM StyleSheets WHERE SheetID = 1"));
  EXPECT_EQ(Load("ben", {}).DayBegin, 6);
}

TEST_F(RequestState, ListsMembershipsAndAdminships) {
  Run(Statement("INSERT INTO GroupViews (Name, Calendars) VALUES ('team', 'ben, anna, nobody')"));
  Visitor visitor = Load("anna", {{"cn", "anna"}});
  EXPECT_EQ(visitor.MemberOfGroups, (Names{"sales", "staff", "default"}));
  EXPECT_EQ(visitor.AdminOfGroups, Names{"sales"});
  EXPECT_TRUE(visitor.MayChangeEventsOf("ANNA"));
  EXPECT_TRUE(visitor.MayChangeEventsOf("sales"));
  EXPECT_FALSE(visitor.MayChangeEventsOf("staff"));
  EXPECT_FALSE(visitor.IsAdministrator());

  EXPECT_EQ(Load("anna", {{"cn", "@team"}}).MemberOfGroups, (Names{"sales", "staff", "default"}));
  EXPECT_EQ(Load("anna", {{"cn", "ben"}}).MemberOfGroups, Names{"default"});
  EXPECT_EQ(Load("ben", {}).AdminOfGroups, Names{});

  visitor = Load("admin", {{"cn", "admin"}});
  EXPECT_EQ(visitor.MemberOfGroups, (Names{"default", "sales", "staff"}));
  EXPECT_EQ(visitor.AdminOfGroups, (Names{"default", "sales", "staff"}));
  EXPECT_EQ(Load("admin", {{"cn", "anna"}}).MemberOfGroups, (Names{"sales", "staff", "default"}));
}

TEST(Visitor, SeesAcceptedEventsAndPrivateOnesInTheOwnCalendar) {
  struct Case {
    const char* LoginName;
    const char* CalName;
    const char* SuggestState;
    bool IsPrivate;
    bool IsSeen;
  };
  for (const Case& c :
       {Case{"anna", "anna", "", false, true}, Case{"anna", "anna", "undecided", false, false},
        Case{"anna", "anna", "declined", false, false}, Case{"anna", "anna", "accepted", true, true},
        Case{"anna", "anna", "-", false, true}, Case{"ANNA", "anna", "", true, true},
        Case{"ben", "anna", "", true, false}, Case{"ben", "anna", "accepted", false, true},
        Case{"", "", "", true, false}}) {
    Visitor visitor;
    visitor.LoginName = c.LoginName;
    visitor.CalName = c.CalName;
    OL_Event event;
    event.SuggestState = SuggestionStateOf(c.SuggestState).value();
    event.Private = c.IsPrivate;
    EXPECT_EQ(visitor.Sees(event), c.IsSeen) << c.LoginName << " " << c.SuggestState;
  }
}

}  // namespace
}  // namespace orlune::testing
