#include "support/calendar_fixture.h"
#include "support/page_text.h"

namespace orlune::testing {
namespace {

/// The list of colours named `name`, with the colour `selected` chosen.
std::string ColourList(const std::string& name, const std::string& selected,
                       const std::string& onChange = "") {
  std::string list = "<SELECT NAME=\"" + name + "\"" + onChange + "><OPTION VALUE=\"\">\r\n";
  for (const auto& [value, label] : {std::pair{"#000000", "Black"},
                                     {"#FFFFFF", "White"},
                                     {"#C0C0C0", "Light Gray"},
                                     {"#FF0000", "Red"},
                                     {"#00FF00", "Green"},
                                     {"#0000FF", "Blue"},
                                     {"#FFFF00", "Yellow"},
                                     {"#00FFFF", "Cyan"},
                                     {"#FF00FF", "Magenta"},
                                     {"#808080", "Dark Gray"},
                                     {"#800000", "Dark Red"},
                                     {"#008000", "Dark Green"},
                                     {"#000080", "Dark Blue"},
                                     {"#808000", "Dark Yellow"},
                                     {"#008080", "Dark Cyan"},
                                     {"#800080", "Dark Magenta"}}) {
    list +=
        std::string("<OPTION VALUE=\"") + value + "\"" + (value == selected ? " SELECTED" : "") + ">" + label;
  }
  return list + "</SELECT>";
}

std::string ActionButton(const std::string& label, const std::string& action) {
  return "<INPUT TYPE=button VALUE=\"" + label +
         "\" onClick=\"javascript:document.acForm.action='/cal.asp?p=p&act=" + action +
         "';document.acForm.submit();\">";
}

const std::string kNameRowOfTeam =
    "<TR><TD>Name:</TD><TD><INPUT TYPE=text NAME=\"name\" VALUE=\"The &#39;Team&#39;\" SIZE=18>"
    "<INPUT TYPE=hidden NAME=\"intname\" VALUE=\"team\"></TD></TR>";

class GroupViews : public CalendarFixture {
 protected:
  GroupViews() {
    AddView("anna", "team", "The &#39;Team&#39;", "sales, Anna, gone", "#FFFF00, , #FF0000",
            ", #0000FF, #FFFFFF");
    AddView("admin", "all", "All", "sales", "", "");
    LogIn("anna", "secret");
  }

  void AddView(std::string_view owner, std::string_view name, std::string_view friendlyName,
               std::string_view calendars, std::string_view background, std::string_view foreground) {
    Run(
        Statement("INSERT INTO GroupViews (Owner, Name, FriendlyName, Calendars, BackGround, ForeGround) "
                  "VALUES ('{}', '{}', '{}', '{}', '{}', '{}')",
                  owner, name, friendlyName, calendars, background, foreground));
  }
  std::string Page(const std::string& query) { return Get(query).Body; }

  /// A view's whole row, beginning with its number.
  std::string Row(std::string_view name) {
    std::string row;
    for (const SqlLiteral& column :
         {SqlLiteral("GroupID"), SqlLiteral("Owner"), SqlLiteral("FriendlyName"), SqlLiteral("Calendars"),
          SqlLiteral("BackGround"), SqlLiteral("ForeGround")}) {
      row += Read(Statement("SELECT {} FROM GroupViews WHERE Name = '{}'", column, name)) + "|";
    }
    return row;
  }
  std::string Count() { return Read(Statement("SELECT Count(GroupID) AS ViewCount FROM GroupViews")); }
};

TEST_F(GroupViews, OfferTheirMembersFirst) {
  const std::string page = Page("p=p&act=groups");
  EXPECT_EQ(page.substr(page.find("<BODY>")),
            "<BODY>\r\n\r\n<TABLE ALIGN=CENTER WIDTH=70%>\r\n"
            "<TR CLASS=\"plain\"><TD><FONT CLASS=\"caltitle\">GROUP VIEWS</FONT></TD><TD ALIGN=RIGHT>&nbsp;" +
                Button("p=c", "View Calendar", "cal.gif") + Button("p=p", "Edit Preferences", "prefs.gif") +
                Button("p=p&act=login", "Change Password", "pref_passwd.gif") +
                "</TD></TR>\r\n<TR><TD COLSPAN=2 CLASS=\"background\">\r\n"
                "<FORM METHOD=post ACTION=\"/cal.asp?p=p&act=groups\" NAME=\"acForm\">"
                "<TABLE CELLSPACING=0.5 ALIGN=CENTER WIDTH=100%><TR><TD>"
                "<TABLE WIDTH=100% CELLSPACING=10 ALIGN=CENTER>"
                "<TR><TD VALIGN=TOP>Saved Group Views:</TD><TD VALIGN=TOP>"
                "<SELECT NAME=\"id\" onChange=\"javascript:document.acForm.submit();\">"
                "<OPTION VALUE=\"\" SELECTED>&lt;New View&gt;<OPTION VALUE=\"1\">The "
                "&#39;Team&#39;</SELECT></TD></TR>"
                "<TR><TD>Name:</TD><TD><INPUT TYPE=text NAME=\"name\" VALUE=\"\" SIZE=18>"
                "<INPUT TYPE=hidden NAME=\"intname\" VALUE=\"\"></TD></TR>"
                "<TR><TD VALIGN=TOP>Calendars:<BR>[Use ctrl to <BR>(de)select entries]</TD>"
                "<TD><SELECT MULTIPLE SIZE=5 NAME=\"cals\"><OPTION VALUE=\"anna\">Anna A"
                "<OPTION VALUE=\"default\">[Everybody]<OPTION VALUE=\"sales\">[Sales]<OPTION "
                "VALUE=\"staff\">[Staff]"
                "</SELECT><INPUT TYPE=hidden NAME=\"return\" VALUE=\"yes\"></TD></TR></TABLE>"
                "<TR><TD COLSPAN=6 ALIGN=CENTER CLASS=\"captions\">" +
                ActionButton("Save", "gsave") + "&nbsp;&nbsp;" + FooterOfAnna() +
                "</FORM>\r\n\r\n</BODY></HTML>");

  const std::string members = Page("p=p&act=gadd&id=1");
  EXPECT_EQ(Cut(members, "<OPTION VALUE=\"\">&lt;", "</SELECT>"),
            "<OPTION VALUE=\"\">&lt;New View&gt;<OPTION VALUE=\"1\" SELECTED>The &#39;Team&#39;</SELECT>");
  EXPECT_NE(members.find(kNameRowOfTeam), std::string::npos);
  EXPECT_EQ(
      Cut(members, "<SELECT MULTIPLE", "</TD></TR>\r\n"),
      "<SELECT MULTIPLE SIZE=5 NAME=\"cals\"><OPTION VALUE=\"anna\" SELECTED>Anna A"
      "<OPTION VALUE=\"default\">[Everybody]<OPTION VALUE=\"sales\" SELECTED>[Sales]"
      "<OPTION VALUE=\"staff\">[Staff]"
      "<INPUT TYPE=hidden NAME=\"salesBG\" VALUE=\"#FFFF00\"><INPUT TYPE=hidden NAME=\"salesFG\" VALUE=\"\">"
      "<INPUT TYPE=hidden NAME=\"AnnaBG\" VALUE=\"\"><INPUT TYPE=hidden NAME=\"AnnaFG\" VALUE=\"#0000FF\">"
      "<INPUT TYPE=hidden NAME=\"goneBG\" VALUE=\"#FF0000\"><INPUT TYPE=hidden NAME=\"goneFG\" "
      "VALUE=\"#FFFFFF\"></SELECT><INPUT TYPE=hidden NAME=\"return\" VALUE=\"yes\"></TD></TR></TABLE>"
      "<TR><TD COLSPAN=6 ALIGN=CENTER CLASS=\"captions\">" +
          ActionButton("Save", "gsave") + "&nbsp;&nbsp;" + ActionButton("Delete", "gdelete") +
          "</TD></TR>\r\n");
  configure_ = [](Orlune& component) { component.NoLoginChange(true); };
  EXPECT_EQ(Page("p=p&act=groups").find("act=login"), std::string::npos);
}

TEST_F(GroupViews, ThenOfferTheColoursOfTheMembersThatThereAre) {
  const std::string page = Page("p=p&act=groups&id=1");
  EXPECT_EQ(
      Cut(page, kNameRowOfTeam, "</SCRIPT>"),
      kNameRowOfTeam +
          "<TR><TD COLSPAN=2><TABLE WIDTH=100%><TR><TD>Calendars:</TD><TD>Background:</TD>"
          "<TD>Foreground:</TD></TR>"
          "<TR><TD ID=\"anna\">Anna A<INPUT TYPE=hidden NAME=\"cals\" VALUE=\"anna\"></TD><TD>" +
          ColourList("annaBG", "") + "</TD><TD>" + ColourList("annaFG", "#0000FF") +
          "</TD></TR><TR><TD ID=\"sales\">Sales<INPUT TYPE=hidden NAME=\"cals\" VALUE=\"sales\"></TD><TD>" +
          ColourList("salesBG", "#FFFF00") + "</TD><TD>" + ColourList("salesFG", "") +
          "</TD></TR></TABLE><INPUT TYPE=hidden NAME=\"return\" VALUE=\"no\">"
          "<SCRIPT LANGUAGE=javascript>\r\n<!--\r\n"
          "sales.style.background=document.acForm.salesBG.value;"
          "sales.style.color=document.acForm.salesFG.value;\r\n"
          "anna.style.background=document.acForm.annaBG.value;"
          "anna.style.color=document.acForm.annaFG.value;\r\n"
          "//-->\r\n</SCRIPT>");
  EXPECT_EQ(Cut(page, "</SCRIPT>", "</TD></TR>\r\n"),
            "</SCRIPT><TR><TD COLSPAN=6 ALIGN=CENTER CLASS=\"captions\">" + ActionButton("Save", "gsave") +
                "&nbsp;&nbsp;" + ActionButton("Add Calendars", "gadd") + "&nbsp;&nbsp;" +
                ActionButton("Delete", "gdelete") + "</TD></TR>\r\n");

  host_.UserAgent = "Mozilla/4.0 (compatible; Test)";
  const std::string compatible = Page("p=p&act=groups&id=1");
  EXPECT_NE(
      compatible.find(ColourList("annaBG", "", " onChange=\"javascript:anna.style.background=this.value;\"")),
      std::string::npos);
  EXPECT_NE(compatible.find(
                ColourList("annaFG", "#0000FF", " onChange=\"javascript:anna.style.color=this.value;\"")),
            std::string::npos);
}

TEST_F(GroupViews, WriteIntoScriptsOnlyNamesThatAreOne) {
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

TEST_F(GroupViews, GoFromANameToMembersToColours) {
  const Answer& members = Post(
      "p=p&act=gsave",
      {{"id", ""}, {"name", "Anna's Team!"}, {"intname", ""}, {"cals", "anna, sales"}, {"return", "yes"}});
  EXPECT_EQ(members.RedirectedTo, "");
  EXPECT_EQ(Row("annasteam"), "3|anna|Anna&#39;s Team!|anna, sales|, |, |");
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
  EXPECT_EQ(Row("annasteam"), "3|anna|Other|sales, anna|#FF0000, |, |");
  EXPECT_EQ(Count(), "3");
  EXPECT_NE(Page("p=c&dm=month&cn=@annasteam").find("<OPTION VALUE=\"@annasteam\" SELECTED>-Other-"),
            std::string::npos);

  EXPECT_EQ(Post("p=p&act=gdelete", {{"id", "3"}}).RedirectedTo, "/cal.asp?p=p&act=groups");
  EXPECT_EQ(Count(), "2");
}

TEST_F(GroupViews, HaveInternalNamesOfTheirOwn) {
  struct Case {
    const char* Id;
    const char* Posted;
    const char* Stored;
  };
  for (const Case& name : {Case{"", "", "another"},
                           {"", "", "another1"},
                           {"", "team", "team1"},
                           {"", "x'); --", "x"},
                           {"", "team", "team2"}}) {
    Post("p=p&act=gsave", {{"id", name.Id}, {"name", "Another"}, {"intname", name.Posted}, {"cals", "anna"}});
    EXPECT_NE(Row(name.Stored).find("|anna|Another|anna|"), std::string::npos) << name.Stored;
  }
  const std::string count = Count();
  for (const char* gone : {"99", "gone", "1, 2"}) {
    EXPECT_EQ(Post("p=p&act=gsave", {{"id", gone}, {"name", "G"}, {"cals", "anna"}}).RedirectedTo,
              "/cal.asp?p=p&act=groups")
        << gone;
  }
  EXPECT_EQ(Count(), count);
  Post("p=p&act=gsave", {{"id", "1"}, {"name", "T"}, {"intname", "all"}, {"cals", "anna"}});
  EXPECT_EQ(Row("team"), "1|anna|T|anna|Null|Null|");
  EXPECT_EQ(Row("all"), "2|admin|All|sales|||");
}

TEST_F(GroupViews, ShowAgainWhatWasPostedWhenItCannotBeStored) {
  const std::string before = Row("team");
  struct Case {
    const char* Id;
    const char* Name;
    const char* Calendars;
    const char* Reason;
    const char* Shown;
  };
  for (const Case& view :
       {Case{"", "", "anna", "Name field is empty.", "<OPTION VALUE=\"anna\" SELECTED>Anna A"},
        {"", "", "", "Name field is empty.", "NAME=\"intname\" VALUE=\"name\""},
        {"1", "a\"b", "", "Name field must not contain quotes.", "VALUE=\"a&quot;b\" SIZE=18"},
        {"1", "T", "", "You must select at least one member calendar.", "<SELECT MULTIPLE"},
        {"1", "", "staff", "Name field is empty.", "<TD ID=\"staff\">"}}) {
    const Answer& answer =
        Post("p=p&act=gsave", {{"id", view.Id}, {"name", view.Name}, {"cals", view.Calendars}});
    EXPECT_EQ(Cut(answer.Body, "alert(", ";"), "alert('" + std::string(view.Reason) + "\\n');");
    EXPECT_NE(answer.Body.find(view.Shown), std::string::npos) << view.Shown;
  }
  EXPECT_EQ(Row("team"), before);
  EXPECT_EQ(Count(), "2");
}

TEST_F(GroupViews, AreTheirOwnersAlone) {
  const std::string refusal = "<P>You don't have rights for this.<P>";
  const std::string before = Row("all");
  const FakeHost::Fields form{{"id", "2"}, {"name", "Mine"}, {"cals", "anna"}};
  for (const char* action : {"groups", "gadd", "gsave", "gdelete"}) {
    EXPECT_NE(Post("p=p&act=" + std::string(action), form).Body.find(refusal), std::string::npos) << action;
  }
  EXPECT_NE(Page("p=p&act=gdelete&id=2").find(refusal), std::string::npos);

  configure_ = [](Orlune& page) { page.LoginName(""); };
  Get("p=l");
  AddView("", "nobodys", "Nobody's", "anna", "", "");
  EXPECT_NE(Post("p=p&act=gsave", {{"name", "New"}, {"cals", "anna"}}).Body.find(refusal), std::string::npos);
  EXPECT_NE(Page("p=p&act=gdelete&id=3").find(refusal), std::string::npos);
  EXPECT_NE(Page("p=p&act=groups&id=3").find(refusal), std::string::npos);
  EXPECT_EQ(Row("all"), before);
  EXPECT_EQ(Count(), "3");
}

TEST_F(GroupViews, ShowTheirColoursInAPopup) {
  Page("p=c&cn=@team");
  const std::string page = Page("p=p&act=gcols");
  EXPECT_EQ(page,
            "<HTML><HEAD>\r\n<TITLE>Colours</TITLE>\r\n"
            "<LINK REL=stylesheet HREF=\"css/dark.css\" TYPE=text/css>\r\n</HEAD><BODY>\r\n\r\n"
            "<P ALIGN=CENTER STYLE=\"background:#FFFF00; color:\">Sales"
            "<P ALIGN=CENTER STYLE=\"background:; color:#0000FF\">Anna A"
            "<P ALIGN=CENTER STYLE=\"background:#FF0000; color:#FFFFFF\">gone"
            "\r\n\r\n</BODY></HTML>");
  Run(Statement("UPDATE GroupViews SET BackGround = 'red;x:y' WHERE GroupID = 1"));
  EXPECT_NE(Page("p=p&act=gcols").find("background:; color:\">Sales"), std::string::npos);
  EXPECT_EQ(Page("p=p&act=gcols&cn=anna").find("<P "), std::string::npos);
}

}  // namespace
}  // namespace orlune::testing
