#include "support/calendar_fixture.h"
#include "support/golden_page.h"
#include "support/page_text.h"

namespace orlune::testing {
namespace {

class GroupViews : public CalendarFixture {
 protected:
  GroupViews() {
    AddView(
        "'anna', 'team', 'The &#39;Team&#39;', 'sales, Anna, gone', '#FFFF00, , #FF0000', "
        "', #0000FF, #FFFFFF'");
    AddView("'admin', 'all', 'All', 'sales', '', ''");
    LogIn("anna", "secret");
  }

  /// `values` of the columns from Owner on.
  void AddView(SqlLiteral values) {
    Run(
        Statement("INSERT INTO GroupViews (Owner, Name, FriendlyName, Calendars, BackGround, ForeGround) "
                  "VALUES ({})",
                  values));
  }
  std::string Page(const std::string& query) { return Get(query).Body; }

  /// A view's whole row, beginning with its number.
  std::string Row(std::string_view name) {
    const auto rows = ReadRows(Statement("SELECT * FROM GroupViews WHERE Name = '{}'", name),
                               {"GroupID", "Owner", "FriendlyName", "Calendars", "BackGround", "ForeGround"});
    return rows.empty() ? "" : rows.front();
  }
  std::string Count() { return Read(Statement("SELECT Count(GroupID) AS ViewCount FROM GroupViews")); }
};

TEST_F(GroupViews, OfferMembersAndThenTheirColours) {
  EXPECT_TRUE(IsGoldenPage("groupviews/new_view", Page("p=p&act=groups")));
  EXPECT_TRUE(IsGoldenPage("groupviews/members", Page("p=p&act=gadd&id=1")));
  EXPECT_TRUE(IsGoldenPage("groupviews/colours", Page("p=p&act=groups&id=1")));
  host_.UserAgent = "Mozilla/4.0 (compatible; Test)";
  EXPECT_TRUE(IsGoldenPage("groupviews/colours_of_compatible", Page("p=p&act=groups&id=1")));
  configure_ = [](Orlune& component) { component.NoLoginChange(true); };
  EXPECT_EQ(Page("p=p&act=groups").find("act=login"), std::string::npos);
}

TEST_F(GroupViews, PutOnlyValidNamesIntoScripts) {
  host_.UserAgent = "Mozilla/4.0 (compatible; Test)";
  for (const char* name : {"default", "2004a", "o'neil", "a-b", "\"><script>alert(1)</script>", "top"}) {
    Run(Statement("INSERT INTO Calendars (Name, FriendlyName, IsGroup) VALUES ('{}', 'Odd', no)", name));
    Run(Statement("UPDATE GroupViews SET Calendars = '{}' WHERE GroupID = 1", name));
    const std::string page = Page("p=p&act=groups&id=1");
    EXPECT_NE(page.find("<SCRIPT LANGUAGE=javascript>\r\n<!--\r\n//-->\r\n</SCRIPT>"), std::string::npos)
        << name;
    EXPECT_EQ(page.find("this.value"), std::string::npos) << name;
    EXPECT_EQ(page.find("\"><script"), std::string::npos) << name;
  }
}

TEST_F(GroupViews, AreMadeInTwoSteps) {
  const Answer& members = Post(
      "p=p&act=gsave",
      {{"id", ""}, {"name", "Anna's Team!"}, {"intname", ""}, {"cals", "anna, sales"}, {"return", "yes"}});
  EXPECT_EQ(members.RedirectedTo, "");
  EXPECT_EQ(Row("annasteam"), "3|anna|Anna&#39;s Team!|anna, sales|, |, ");
  EXPECT_NE(members.Body.find("<OPTION VALUE=\"3\" SELECTED>Anna&#39;s Team!"), std::string::npos);
  EXPECT_NE(members.Body.find("<TR><TD ID=\"sales\">"), std::string::npos);

  EXPECT_EQ(Post("p=p&act=gsave", {{"id", "3"},
                                   {"name", "Other"},
                                   {"intname", "annasteam"},
                                   {"cals", "sales, anna"},
                                   {"salesBG", "#FF0000"},
                                   {"salesFG", ""},
                                   {"annaBG", "red, blue"},
                                   {"annaFG", "\"><b"},
                                   {"return", "no"}})
                .RedirectedTo,
            "/cal.asp?p=p&act=groups");
  EXPECT_EQ(Row("annasteam"), "3|anna|Other|sales, anna|#FF0000, |, ");
  EXPECT_EQ(Count(), "3");
  EXPECT_NE(Page("p=c&dm=month&cn=@annasteam").find("<OPTION VALUE=\"@annasteam\" SELECTED>-Other-"),
            std::string::npos);

  EXPECT_EQ(Post("p=p&act=gdelete", {{"id", "3"}}).RedirectedTo, "/cal.asp?p=p&act=groups");
  EXPECT_EQ(Count(), "2");
}

TEST_F(GroupViews, HaveUniqueInternalNames) {
  for (const auto& [posted, stored] :
       {std::pair{"", "another"}, {"", "another1"}, {"team", "team1"}, {"x'); --", "x"}, {"team", "team2"}}) {
    Post("p=p&act=gsave", {{"id", ""}, {"name", "Another"}, {"intname", posted}, {"cals", "anna"}});
    EXPECT_NE(Row(stored).find("|anna|Another|anna|"), std::string::npos) << stored;
  }
  const std::string count = Count();
  for (const char* gone : {"99", "gone", "1, 2"}) {
    EXPECT_EQ(Post("p=p&act=gsave", {{"id", gone}, {"name", "G"}, {"cals", "anna"}}).RedirectedTo,
              "/cal.asp?p=p&act=groups")
        << gone;
  }
  EXPECT_EQ(Count(), count);
  Post("p=p&act=gsave", {{"id", "1"}, {"name", "T"}, {"intname", "all"}, {"cals", "anna"}});
  EXPECT_EQ(Row("team"), "1|anna|T|anna|Null|Null");
  EXPECT_EQ(Row("all"), "2|admin|All|sales||");
}

TEST_F(GroupViews, AreShownAgainWhenInvalid) {
  const std::string before = Row("team");
  for (const auto& [id, name, calendars, reason, shown] :
       {std::tuple{"", "", "anna", "Name field is empty.", "<OPTION VALUE=\"anna\" SELECTED>Anna A"},
        {"", "", "", "Name field is empty.", "NAME=\"intname\" VALUE=\"name\""},
        {"1", "a\"b", "", "Name field must not contain quotes.", "VALUE=\"a&quot;b\" SIZE=18"},
        {"1", "T", "", "You must select at least one member calendar.", "<SELECT MULTIPLE"},
        {"1", "", "staff", "Name field is empty.", "<TD ID=\"staff\">"}}) {
    const Answer& answer = Post("p=p&act=gsave", {{"id", id}, {"name", name}, {"cals", calendars}});
    EXPECT_EQ(AlertOf(answer.Body), reason + std::string("\\n"));
    EXPECT_NE(answer.Body.find(shown), std::string::npos) << shown;
  }
  EXPECT_EQ(Row("team"), before);
  EXPECT_EQ(Count(), "2");
}

TEST_F(GroupViews, AreAccessibleToTheirOwnerOnly) {
  const std::string refusal = "<P>You don't have rights for this.<P>";
  const std::string before = Row("all");
  const FakeHost::Fields form{{"id", "2"}, {"name", "Mine"}, {"cals", "anna"}};
  for (const char* action : {"groups", "gadd", "gsave", "gdelete"}) {
    EXPECT_NE(Post("p=p&act=" + std::string(action), form).Body.find(refusal), std::string::npos) << action;
  }
  EXPECT_NE(Page("p=p&act=gdelete&id=2").find(refusal), std::string::npos);

  configure_ = [](Orlune& page) { page.LoginName(""); };
  Get("p=l");
  AddView("'', 'nobodys', 'Nobody', 'anna', '', ''");
  EXPECT_NE(Post("p=p&act=gsave", {{"name", "New"}, {"cals", "anna"}}).Body.find(refusal), std::string::npos);
  EXPECT_NE(Page("p=p&act=gdelete&id=3").find(refusal), std::string::npos);
  EXPECT_NE(Page("p=p&act=groups&id=3").find(refusal), std::string::npos);
  EXPECT_EQ(Row("all"), before);
  EXPECT_EQ(Count(), "3");
}

TEST_F(GroupViews, ShowTheirColoursInAPopup) {
  Page("p=c&cn=@team");
  EXPECT_TRUE(IsGoldenPage("groupviews/popup", Page("p=p&act=gcols")));
  Run(Statement("UPDATE GroupViews SET BackGround = 'red;x:y' WHERE GroupID = 1"));
  EXPECT_NE(Page("p=p&act=gcols").find("background:; color:\">Sales"), std::string::npos);
  EXPECT_EQ(Page("p=p&act=gcols&cn=anna").find("<P "), std::string::npos);
}

}  // namespace
}  // namespace orlune::testing
