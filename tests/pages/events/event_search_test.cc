#include "model/occurrence_dates.h"
#include "model/repetition_rule.h"
#include "support/calendar_fixture.h"
#include "support/page_text.h"

namespace orlune::testing {
namespace {

class EventSearch : public CalendarFixture {
 protected:
  EventSearch() {
    LogIn("anna", "secret");
    AddEvent("anna", "Lunch", "Type, BeginDate, BeginTime, EndTime, Comments",
             "'none', '3/20/2004', '12:00', '13:00', 'with Ben'");
    AddEvent("sales", "Fair", "Type, BeginDate, EndDate", "'day', '3/10/2004', '3/12/2004'");
    AddEvent("ben", "Dentist", "Type, BeginDate", "'none', '3/16/2004'");
    AddEvent("admin", "lunch of the boss", "Type, BeginDate, Private", "'none', '3/18/2004', yes");
    Run(Statement("UPDATE Calendars SET IsHidden = no WHERE Name = 'admin'"));
  }

  std::string Find(const FakeHost::Fields& criteria) { return Post("p=e&act=results", criteria).Body; }
  /// The first cells of the hits, without their tags.
  std::vector<std::string> Hits(const FakeHost::Fields& criteria) {
    std::string page = Find(criteria);
    std::vector<std::string> hits;
    for (std::size_t at = 0; (at = page.find("\r\n<TR><TD>", at)) != std::string::npos; ++at) {
      std::string text;
      bool isTag = false;
      for (const char c : Cut(page.substr(at), "<TD>", "</TD>")) {
        if (c == '<') isTag = true;
        if (!isTag) text += c;
        if (c == '>') isTag = false;
      }
      hits.push_back(text);
    }
    return hits;
  }
  using Texts = std::vector<std::string>;
};

TEST_F(EventSearch, FindsWhatItsCriteriaName) {
  const struct {
    const char* Name;
    FakeHost::Fields Criteria;
    Texts Expected;
  } cases[] = {
      {"everything visible",
       {{"date1", "1/1/2004"}},
       {"Fair (Sales)", "Private (Administrator)", "Lunch (Anna A)"}},
      {"title, whatever the case",
       {{"date1", "1/1/2004"}, {"search", "LUNCH"}},
       {"Private (Administrator)", "Lunch (Anna A)"}},
      {"comments", {{"date1", "1/1/2004"}, {"search", "ith b"}}, {"Lunch (Anna A)"}},
      {"an apostrophe is only searched for", {{"date1", "1/1/2004"}, {"search", "') OR ('1'='1"}}, {}},
      {"ends on the start date", {{"date1", "3/12/2004"}, {"cal", "sales"}}, {"Fair (Sales)"}},
      {"ended before", {{"date1", "3/13/2004"}, {"cal", "sales"}}, {}},
      {"kind", {{"date1", "1/1/2004"}, {"reptype", "day"}}, {"Fair (Sales)"}},
      {"kind, from the list of hits",
       {{"date1", "1/1/2004"}, {"type", "none"}, {"cal", "anna"}},
       {"Lunch (Anna A)"}},
      {"hidden, but named", {{"date1", "1/1/2004"}, {"cal", "ben"}}, {"Dentist (Ben B)"}},
      {"unknown calendar", {{"date1", "1/1/2004"}, {"cal", "nobody"}}, {}},
  };
  for (const auto& c : cases) EXPECT_EQ(Hits(c.Criteria), c.Expected) << c.Name;

  for (const char* state : {"undecided", "declined", "accepted", "-"}) {
    const int id = AddEvent("anna", state, "Type, BeginDate", "'none', '3/1/2005'");
    Run(Statement("UPDATE Events SET SuggestState = '{}' WHERE EventID = {}", state, id));
  }
  EXPECT_EQ(Hits({{"date1", "1/1/2005"}}), (Texts{"accepted (Anna A)", "- (Anna A)"}));
}

TEST_F(EventSearch, ShowsAHitWithItsDays) {
  const std::string page = Find({{"date1", "3/1/2004"}, {"search", "\"%"}, {"cal", "sales"}});
  EXPECT_NE(page.find("\r\n</TR>"), 0U);
  EXPECT_EQ(
      Cut(page, "CLASS=\"background\">", "<TABLE"),
      "CLASS=\"background\">\r\n<FORM METHOD=post ACTION=\"/cal.asp?p=e&act=results\" NAME=\"acForm\">"
      "<INPUT TYPE=hidden NAME=\"search\" VALUE=\"&quot;%\"><INPUT TYPE=hidden NAME=\"cal\" VALUE=\"sales\">"
      "<INPUT TYPE=hidden NAME=\"type\" VALUE=\"\"><INPUT TYPE=hidden NAME=\"date1\" "
      "VALUE=\"3/1/2004\"><TABLE");
  EXPECT_EQ(Cut(page, "<TR><TD ALIGN=CENTER COLSPAN=4", "</TABLE>"),
            "<TR><TD ALIGN=CENTER COLSPAN=4>(No Events Found)</TD></TR></TABLE>");

  EXPECT_EQ(
      Cut(Find({{"date1", "3/1/2004"}, {"cal", "sales"}}), "<TR><TD><A", "</TABLE>"),
      "<TR><TD><A HREF=\"/cal.asp?p=e&id=2\" TITLE=\"Edit Event\" " + Status("Edit Event") +
          ">Fair</A> (Sales)</TD><TD>&nbsp;</TD><TD><NOBR><SELECT NAME=\"cd1\" TITLE=\"Occurrences\">\r\n"
          "<OPTION VALUE=\"3/10/2004\">Wed 3/10/2004\r\n<OPTION VALUE=\"3/11/2004\">Thu 3/11/2004\r\n"
          "<OPTION VALUE=\"3/12/2004\">Fri 3/12/2004\r\n</SELECT> <INPUT TYPE=button VALUE=\"Go\" "
          "onClick=\"javascript:f=document.acForm;f.action='/cal.asp?cn=sales&cd='"
          "+f.cd1.options[f.cd1.selectedIndex].value;f.submit();\"></NOBR></TD>"
          "<TD ALIGN=CENTER CLASS=\"captions\"><INPUT TYPE=checkbox NAME=\"id\" VALUE=\"2\" "
          "TITLE=\"Del\"></TD>"
          "</TR>\r\n<TR><TD ALIGN=CENTER COLSPAN=4 CLASS=\"captions\"><INPUT TYPE=button "
          "VALUE=\"Delete Selected Events\" onClick=\"javascript:document.acForm.action="
          "'/cal.asp?p=e&act=delete&ret=results';document.acForm.submit();\"></TD></TR></TABLE>");
  EXPECT_NE(Find({{"date1", "3/1/2004"}, {"cal", "anna"}}).find("<TD>12:00-13:00</TD>"), std::string::npos);
  Run(Statement("UPDATE Events SET Type = 'month', EndDate = '3/21/2004' WHERE EventID = 1"));
  EXPECT_NE(Find({{"date1", "3/1/2004"}, {"cal", "anna"}}).find("<TD>No occurrences.</TD>"),
            std::string::npos);
}

TEST_F(EventSearch, AsksAgainForADate) {
  const std::string page =
      Find({{"date1", "someday"}, {"search", "a \"b\""}, {"cal", "sales"}, {"reptype", "month"}});
  EXPECT_EQ(AlertOf(page), "The start date is not a valid date.\\n");
  EXPECT_NE(page.find("ID=\"search\" VALUE=\"a &quot;b&quot;\""), std::string::npos);
  EXPECT_NE(page.find("ID=\"date1\" VALUE=\"someday\""), std::string::npos);
  EXPECT_NE(page.find("<OPTION VALUE=\"sales\" SELECTED>[Sales]"), std::string::npos);
  EXPECT_NE(page.find("<OPTION VALUE=\"month\" SELECTED>Monthly"), std::string::npos);
  EXPECT_EQ(AlertOf(Find({{"date1", ""}})), "The start date is not a valid date.\\n");
  const std::string fresh = Get("p=e&act=find&cd=4/1/2004").Body;
  EXPECT_NE(fresh.find("ID=\"date1\" VALUE=\"4/1/2004\""), std::string::npos);
  EXPECT_NE(
      fresh.find("<OPTION VALUE=\"\" SELECTED>All Calendars\r\n<OPTION VALUE=\"admin\">Administrator\r\n"
                 "<OPTION VALUE=\"anna\">Anna A\r\n<OPTION VALUE=\"default\">[Everybody]"),
      std::string::npos);
}

TEST_F(EventSearch, ShowsTheRestAfterADeletion) {
  const Answer& answer =
      Post("p=e&act=delete&ret=results",
           {{"id", "1, 2"}, {"search", ""}, {"cal", ""}, {"type", ""}, {"date1", "1/1/2004"}});
  EXPECT_EQ(answer.RedirectedTo, "");
  EXPECT_NE(answer.Body.find("Private (Administrator)"), std::string::npos);
  EXPECT_EQ(answer.Body.find("Fair"), std::string::npos);
  EXPECT_EQ(Read(Statement("SELECT Count(EventID) AS n FROM Events")), "2");
  EXPECT_NE(Post("p=e&act=delete&ret=results", {{"date1", "1/1/2004"}}).Body.find("Private (Administrator)"),
            std::string::npos);
  EXPECT_EQ(Read(Statement("SELECT Count(EventID) AS n FROM Events")), "2");
}

TEST(OccurrenceDates, AreThoseOfTheRule) {
  using std::chrono::year;
  const Week week(2, "1, 7");
  OL_Event event;
  event.BeginDate = year{2003} / 12 / 31;
  event.EndDate = year{2010} / 1 / 31;
  event.RepeatWeekday = "1, 4";
  event.RepeatFrequency = "vko_3";
  event.RepeatDay = "31";
  for (const char* type : {"weekday", "month", "year"}) {
    for (const char* weekends : {"vkl_ok", "vkl_no", "vkl_ma", "vkl_pe"}) {
      event.Type = type;
      event.RepeatWeekends = weekends;
      std::vector<Date> expected;
      for (Date date = event.BeginDate; date <= event.EndDate; date += std::chrono::days{1}) {
        if (OccursOn(date, event, week)) expected.push_back(date);
      }
      ASSERT_FALSE(expected.empty());
      EXPECT_EQ(OccurrenceDates(event, week, 1000), expected) << type << weekends;
      expected.resize(2);
      EXPECT_EQ(OccurrenceDates(event, week, 2), expected) << type << weekends;
    }
  }
}

}  // namespace
}  // namespace orlune::testing
