#include "component/orlune.h"

#include "html/form_parts.h"
#include "request/texts.h"
#include "support/calendar_fixture.h"

namespace orlune::testing {
namespace {

using Component = CalendarFixture;

TEST_F(Component, SaysThatItsDatabaseCannotBeOpened) {
  databasePath_ = "/nowhere/calendar.db";
  const Answer& answer = Get("p=c");
  EXPECT_EQ(answer.Body, "Could not open database /nowhere/calendar.db.");
  EXPECT_EQ(answer.Status, 503U);
}

TEST_F(Component, AnswersUnknownPagesWithNothing) {
  LogIn("anna", "secret");
  for (const char* query : {"p=x", "p=C", "p=cc"}) EXPECT_EQ(Get(query).Body, "") << query;
  EXPECT_NE(Get("p=c").Body, "");
  EXPECT_EQ(Get("").Body, Get("p=c").Body);
}

TEST_F(Component, RunsWithoutALoginWhenToldSo) {
  configure_ = [](Orlune& page) {
    page.LoginName("");
    page.CalName("sales");
  };
  AddEvent("sales", "Fair", "Type, BeginDate, Private", "'none', '3/15/2004', no");
  AddEvent("sales", "Secret", "Type, BeginDate, Private", "'none', '3/15/2004', yes");
  const std::string page = Get("").Body;
  EXPECT_NE(page.find("MARCH 2004"), std::string::npos);
  EXPECT_NE(page.find("Fair"), std::string::npos);
  EXPECT_EQ(page.find("Secret"), std::string::npos);
  EXPECT_NE(page.find(">Login</A>"), std::string::npos);
  EXPECT_EQ(page.find("event_new.gif"), std::string::npos);
  EXPECT_EQ(host_.Get("Login"), "");
}

TEST_F(Component, TakesItsPropertiesIntoThePage) {
  configure_ = [](Orlune& page) {
    page.ImageDir("img");
    page.CssDir("style/");
    page.HeadData("<META NAME=x>");
    page.HTMLHeader("<H1>Hello</H1>");
    page.HTMLFooter("<HR>");
    page.NoOLORLink(true);
    page.DemoMode(true);
    page.Language("Klingon");
    page.ExpireCookie("no date");
  };
  host_.UserAgent = "Mozilla/4.0 (compatible; MSIE 6.0)";
  const std::string login = Get("").Body;
  EXPECT_NE(login.find("HREF=\"style/default.css\" TYPE=text/css>\r\n<META NAME=x>\r\n</HEAD>"),
            std::string::npos);
  EXPECT_NE(login.find(">\r\n<H1>Hello</H1>\r\n<FORM"), std::string::npos);
  EXPECT_NE(login.find("</FORM>\r\n<HR>\r\n</BODY></HTML>"), std::string::npos);
  EXPECT_NE(login.find("<FONT STYLE=\"font-size: 8pt\">Orlune v1.0.0</FONT>"), std::string::npos);
  EXPECT_NE(login.find("<P ALIGN=CENTER>Username: admin, password: demo1</FORM>"), std::string::npos);
  EXPECT_NE(login.find("SIZE=38"), std::string::npos);
  EXPECT_NE(login.find("CELLSPACING=1 "), std::string::npos);
  LogIn("anna", "secret");
  EXPECT_NE(Get("").Body.find("<IMG SRC=\"img/cal_back.gif\""), std::string::npos);
}

TEST_F(Component, TellsItsScriptWhatAPageLeavesOut) {
  const SqlLiteral columns("Type, BeginDate, BeginTime, EndTime, Private");
  AddEvent("anna", "Run", columns, "'none', '3/16/2004', '6:00:00', Null, no");
  AddEvent("anna", "Breakfast", columns, "'none', '3/16/2004', '7:00:00', '8:30:00', no");
  AddEvent("anna", "Ends within the day", columns, "'none', '3/16/2004', '7:30:00', '9:00:00', no");
  AddEvent("anna", "Begins in the last hour", columns, "'none', '3/16/2004', '17:45:00', '20:00:00', no");
  AddEvent("anna", "Untimed", columns, "'none', '3/16/2004', Null, Null, no");
  AddEvent("anna", "Dinner", columns, "'none', '3/16/2004', '18:00:00', Null, no");
  const auto ask = [this](const std::string& path, const std::string& query) {
    host_.PathInfo = path;
    const Answer& answer = Get(query);
    return std::to_string(answer.Status) + " " + answer.Body;
  };
  EXPECT_EQ(ask("/hours", "date=3/16/2004&calendar=anna"), "403 ");
  host_.PathInfo = "";
  LogIn("anna", "secret");
  const auto session = host_.SessionValues;
  EXPECT_EQ(ask("/hours", "date=3/16/2004&calendar=anna"), "200 {\"earlier\":2,\"later\":1}");
  EXPECT_EQ(ask("/hours", "date=3/17/2004&calendar=anna&p=l"), "200 {\"earlier\":0,\"later\":0}");
  EXPECT_EQ(ask("/hours", "date=soon&calendar=anna"), "400 ");
  EXPECT_EQ(host_.SessionValues, session);
  EXPECT_TRUE(ask("/texts", "").starts_with(R"(200 {"language":"en",)"));
}

TEST_F(Component, ShowsTextsOfALanguagePackWithEnglishForTheRest) {
  class Pack : public Localiser {
   public:
    std::optional<std::string_view> Loadstring(int id) const override {
      return id == 110 ? std::optional<std::string_view>("Kirjaudu ulos %s (%t)") : std::nullopt;
    }
  };
  HostingPage hosting;
  const Visitor visitor;
  const PageContext context{hosting, visitor, surroundings_.Regional, {}, false};
  EXPECT_EQ(LoadText(context, Text::kInvalidDate, {"1.1."}), "1.1. is not a valid date.\\n");
  hosting.Localiser = std::make_shared<Pack>();
  EXPECT_EQ(LoadText(context, Text::kLogout, {"%t", "x"}), "Kirjaudu ulos x (x)");
  EXPECT_EQ(LoadText(context, Text::kLoginButton), "Login");
}

TEST_F(Component, OffersTimesInTheUsersClock) {
  const HostingPage hosting;
  Visitor visitor;
  const PageContext context{hosting, visitor, surroundings_.Regional, {}, false};
  const auto count = [](const std::string& text, std::string_view part) {
    std::size_t found = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++found;
    return found;
  };
  EXPECT_EQ(count(TimeSelect(context, "t", {}, 30, false).Text(), "<OPTION>"), 48U);
  visitor.TimeFormat = "Hh:Nn AM/PM";
  const std::string list = TimeSelect(context, "time1", std::chrono::seconds{9 * 3600 + 59}, 15, true).Text();
  EXPECT_TRUE(list.starts_with("<SELECT NAME=\"time1\">\r\n<OPTION>- - - -\r\n<OPTION>12:00 AM\r\n")) << list;
  EXPECT_EQ(count(list, "<OPTION"), 97U);
  EXPECT_EQ(count(list, " SELECTED"), 1U);
  EXPECT_NE(list.find("<OPTION SELECTED>09:00 AM\r\n"), std::string::npos);
  EXPECT_TRUE(list.ends_with("<OPTION>11:45 PM\r\n</SELECT>\r\n"));
}

TEST(SelectedIf, IgnoresTheFirstElementOfAnArray) {
  const std::vector<std::string> values{"a", "b"};
  EXPECT_EQ(SelectedIf(values, "a").Text(), "");
  EXPECT_EQ(SelectedIf(values, "b").Text(), " SELECTED");
  EXPECT_EQ(SelectedIf("a, b", "a").Text(), " SELECTED");
  EXPECT_EQ(SelectedIf("ab", "a").Text(), "");
}

}  // namespace
}  // namespace orlune::testing
