#include "support/calendar_fixture.h"
#include "support/page_text.h"

namespace orlune::testing {
namespace {

std::string FormButton(const std::string& label, const std::string& action) {
  return "<INPUT TYPE=button VALUE=\"" + label +
         "\" onClick=\"javascript:document.acForm.action='/cal.asp?p=a&act=" + action +
         "';document.acForm.submit();\">";
}

const std::string kCalendarButton = Button("p=c", "View Calendar", "cal.gif");
const std::string kUserButton = Button("p=a&act=um_list", "User Manager", "admin_um.gif");
const std::string kGroupButton = Button("p=a&act=gm_list", "Group Manager", "admin_gm.gif");
const std::string kSchemeButton = Button("p=a&act=cm_list", "Colour Scheme Manager", "admin_cm.gif");
const std::string kTypeButton = Button("p=a&act=tm_list", "Event Type Manager", "admin_tm.gif");

/// A manager's whole page for the admin.
std::string Page(const std::string& prefix, const std::string& menu, const std::string& title,
                 const std::string& rows, const std::string& buttons) {
  return "<HTML><HEAD>\r\n<TITLE>Orlune v1.0.0</TITLE>\r\n"
         "<LINK REL=stylesheet HREF=\"css/dark.css\" TYPE=text/css>\r\n</HEAD><BODY>\r\n\r\n" +
         kCalendarButton + menu + "<FORM METHOD=post ACTION=\"/cal.asp?p=a&act=" + prefix +
         "_list\" NAME=\"acForm\"><TABLE ALIGN=CENTER>\r\n"
         "<TR CLASS=\"plain\"><TD><FONT CLASS=\"caltitle\">" +
         title +
         "</FONT></TD><TD ALIGN=RIGHT>&nbsp;</TD></TR>\r\n"
         "<TR><TD COLSPAN=2 CLASS=\"background\">\r\n"
         "<TABLE CELLSPACING=0.5 ALIGN=CENTER WIDTH=100%><TR><TD>"
         "<TABLE WIDTH=100% CELLSPACING=10 ALIGN=CENTER>\r\n" +
         rows + "</TABLE></TD></TR><TR><TD COLSPAN=6 ALIGN=CENTER CLASS=\"captions\">" + buttons +
         "</TD></TR></TABLE>\r\n</TD></TR>\r\n"
         "<TR CLASS=\"plain\"><TD><A HREF=\"https://orlune.example/\" "
         "STYLE=\"text-decoration:none; font-size: 8pt\" TARGET=\"_new\" TITLE=\"Go To Orlune Site\" " +
         Status("Go To Orlune Site") +
         ">Orlune v1.0.0</A></TD><TD ALIGN=RIGHT><A HREF=\"/cal.asp?p=l\" TITLE=\"End Session\" " +
         Status("End Session") + ">Logout admin</A></TD></TR></TABLE>\r\n</FORM>\r\n\r\n</BODY></HTML>";
}

std::string List(const std::string& caption, const std::string& newEntry, const std::string& options) {
  return "<TR><TD VALIGN=TOP>" + caption +
         "</TD><TD VALIGN=TOP><SELECT NAME=\"id\" SIZE=5 "
         "onChange=\"javascript:document.acForm.submit();\"><OPTION VALUE=\"\">&lt;" +
         newEntry + "&gt;" + options + "</SELECT></TD></TR>";
}

std::string Field(const std::string& label, const std::string& name, const std::string& value,
                  const std::string& after = "") {
  return "<TR><TD>" + label + "</TD><TD><INPUT TYPE=text NAME=\"" + name + "\" VALUE=\"" + value +
         "\" SIZE=18>" + after + "</TD></TR>";
}

std::string Choice(const std::string& label, const std::string& name, const std::string& options) {
  return "<TR><TD VALIGN=TOP>" + label +
         "<BR>[Use ctrl to <BR>(de)select entries]</TD><TD VALIGN=TOP><SELECT NAME=\"" + name +
         "\" SIZE=5 MULTIPLE>" + options + "</SELECT></TD></TR>";
}

std::string Hidden(const std::string& name, const std::string& value) {
  return "<INPUT TYPE=hidden NAME=\"" + name + "\" VALUE=\"" + value + "\">";
}

std::string Password(const std::string& value) {
  return "<TR><TD>Password:</TD><TD><INPUT TYPE=password NAME=\"password\" VALUE=\"" + value +
         "\" SIZE=18></TD></TR>";
}

const std::string kVisible =
    "<TR><TD>Viewing:</TD><TD><INPUT TYPE=radio NAME=\"hide\" VALUE=\"no\" CHECKED>Visible"
    "<INPUT TYPE=radio NAME=\"hide\" VALUE=\"yes\">Hidden</TD></TR>";
const std::string kHidden =
    "<TR><TD>Viewing:</TD><TD><INPUT TYPE=radio NAME=\"hide\" VALUE=\"no\">Visible"
    "<INPUT TYPE=radio NAME=\"hide\" VALUE=\"yes\" CHECKED>Hidden</TD></TR>";

class AdminPages : public CalendarFixture {
 protected:
  AdminPages() { LogIn("admin", "demo1"); }

  std::string IdOf(std::string_view calendar) {
    return Read(Statement("SELECT CalendarID FROM Calendars WHERE Name = '{}'", calendar));
  }
  std::string Chosen(const std::string& prefix, const std::string& id) {
    return Post("p=a&act=" + prefix + "_list", {{"id", id}}).Body;
  }
};

TEST_F(AdminPages, UsersAreListedAndEdited) {
  const std::string menu = kGroupButton + kSchemeButton + kTypeButton;
  const auto users = [&](const std::string& selected) {
    std::string options;
    for (const auto& [name, label] :
         {std::pair{"admin", "Administrator (admin)"}, {"anna", "Anna A (anna)"}, {"ben", "Ben B (ben)"}}) {
      options += "<OPTION VALUE=\"" + IdOf(name) + "\"" + (name == selected ? " SELECTED" : "") + ">" + label;
    }
    return List("All Users:", "New User", options);
  };
  const std::string save = FormButton("Save", "um_save");
  const std::string groups = "<OPTION VALUE=\"sales\">Sales (sales)<OPTION VALUE=\"staff\">Staff (staff)";
  const std::string empty =
      Page("um", menu, "USERS",
           users("") + Field("Name:", "name", "") + Field("Login Name:", "intname", "") + Password("") +
               Choice("Memberships:", "memberships", groups) + Choice("Adminships:", "adminships", groups) +
               kVisible,
           save);
  for (const char* query : {"p=a", "p=a&act=um_list", "p=a&act=um", "p=a&act=um_x", "p=a&act=xx_save"})
    EXPECT_EQ(Get(query).Body, empty) << query;
  for (const char* id : {"0", "x", "1 OR 1=1", "99999999999999999999", "-1"})
    EXPECT_EQ(Chosen("um", id), empty) << id;
  EXPECT_EQ(Chosen("um", IdOf("sales")), empty) << "a group is no user";

  Run(
      Statement("UPDATE Calendars SET MemberOfGroups = 'salesmen, STAFF', FriendlyName = 'Anna A' "
                "WHERE Name = 'anna'"));
  EXPECT_EQ(
      Chosen("um", IdOf("anna")),
      Page("um", menu, "USERS",
           users("anna") + Field("Name:", "name", "Anna A") + Field("Login Name:", "intname", "anna") +
               Password("secret") +
               Choice("Memberships:", "memberships",
                      "<OPTION VALUE=\"sales\">Sales (sales)<OPTION VALUE=\"staff\" SELECTED>Staff (staff)") +
               Choice("Adminships:", "adminships",
                      "<OPTION VALUE=\"sales\" SELECTED>Sales (sales)<OPTION VALUE=\"staff\">Staff (staff)") +
               kVisible,
           save + "&nbsp;&nbsp;" + FormButton("Delete", "um_delete")));

  const std::string fixedLists = "<TR><TD VALIGN=TOP>Memberships:</TD><TD VALIGN=TOP>All Groups" +
                                 Hidden("memberships", "") +
                                 "</TD></TR><TR><TD VALIGN=TOP>Adminships:</TD><TD VALIGN=TOP>All Groups" +
                                 Hidden("adminships", "") + "</TD></TR>";
  const std::string adminRows = users("admin") + Field("Name:", "name", "Administrator") +
                                "<TR><TD>Login Name:</TD><TD>admin" + Hidden("intname", "admin") +
                                "</TD></TR>";
  EXPECT_EQ(Chosen("um", IdOf("admin")),
            Page("um", menu, "USERS", adminRows + Password("demo1") + fixedLists + kHidden, save));
  configure_ = [](Orlune& page) { page.DemoMode(true); };
  EXPECT_EQ(Chosen("um", IdOf("admin")),
            Page("um", menu, "USERS",
                 adminRows + "<TR><TD>Password:<BR>[changing disabled <BR>in demo version]</TD><TD>demo1" +
                     Hidden("password", "demo1") + "</TD></TR>" + fixedLists + kHidden,
                 save));
}

TEST_F(AdminPages, GroupsAreListedAndEdited) {
  const std::string menu = kUserButton + kSchemeButton + kTypeButton;
  const auto groups = [&](const std::string& selected) {
    std::string options;
    for (const auto& [name, label] : {std::pair{"default", "Everybody (default)"},
                                      {"sales", "Sales (sales)"},
                                      {"staff", "Staff (staff)"}}) {
      options += "<OPTION VALUE=\"" + IdOf(name) + "\"" + (name == selected ? " SELECTED" : "") + ">" + label;
    }
    return List("All Groups:", "New Group", options);
  };
  const std::string save = FormButton("Save", "gm_save");
  const std::string users = "<OPTION VALUE=\"anna\">Anna A (anna)<OPTION VALUE=\"ben\">Ben B (ben)";
  EXPECT_EQ(Get("p=a&act=gm_list").Body, Page("gm", menu, "GROUPS",
                                              groups("") + Field("Name:", "name", "", Hidden("intname", "")) +
                                                  Choice("Group Members:", "memberships", users) +
                                                  Choice("Group Admins:", "adminships", users) + kHidden,
                                              save));
  EXPECT_EQ(Chosen("gm", IdOf("anna")), Get("p=a&act=gm_list").Body) << "a user is no group";

  Run(
      Statement("UPDATE Calendars SET MemberOfGroups = 'salesmen', AdminOfGroups = 'staff, Sales' "
                "WHERE Name = 'ben'"));
  EXPECT_EQ(
      Chosen("gm", IdOf("sales")),
      Page(
          "gm", menu, "GROUPS",
          groups("sales") + Field("Name:", "name", "Sales", Hidden("intname", "sales")) +
              Choice("Group Members:", "memberships",
                     "<OPTION VALUE=\"anna\" SELECTED>Anna A (anna)<OPTION VALUE=\"ben\">Ben B (ben)") +
              Choice(
                  "Group Admins:", "adminships",
                  "<OPTION VALUE=\"anna\" SELECTED>Anna A (anna)<OPTION VALUE=\"ben\" SELECTED>Ben B (ben)") +
              kVisible,
          save + "&nbsp;&nbsp;" + FormButton("Delete", "gm_delete")));
  EXPECT_EQ(
      Chosen("gm", IdOf("default")),
      Page("gm", menu, "GROUPS",
           groups("default") + Field("Name:", "name", "Everybody", Hidden("intname", "default")) +
               "<TR><TD VALIGN=TOP>Group Members:</TD><TD VALIGN=TOP>All Users" + Hidden("memberships", "") +
               "</TD></TR><TR><TD VALIGN=TOP>Group Admins:</TD><TD VALIGN=TOP>admin" +
               Hidden("adminships", "") + "</TD></TR>" + kVisible,
           save));
}

TEST_F(AdminPages, SchemesAndTypesAreListedAndEdited) {
  Run(Statement("INSERT INTO StyleSheets (SheetName, SheetFile) VALUES ('Bright', 'default.css')"));
  Run(Statement("INSERT INTO EventTypes (TypeName, FileName) VALUES ('Trip', 'trip.gif')"));
  Run(Statement("INSERT INTO EventTypes (TypeName, FileName) VALUES ('Call', 'call.gif')"));
  const std::string schemeMenu = kUserButton + kGroupButton + kTypeButton;
  const auto schemes = [](const char* bright, const char* dark) {
    return List("Available Colour Schemes:", "New Scheme",
                std::string("<OPTION VALUE=\"2\"") + bright + ">Bright (default.css)<OPTION VALUE=\"1\"" +
                    dark + ">Dark (dark.css)");
  };
  EXPECT_EQ(Get("p=a&act=cm_list").Body,
            Page("cm", schemeMenu, "COLOUR SCHEMES",
                 schemes("", "") + Field("Name:", "name", "") + Field("Filename:", "intname", ""),
                 FormButton("Save", "cm_save")));
  EXPECT_EQ(Chosen("cm", "1"),
            Page("cm", schemeMenu, "COLOUR SCHEMES",
                 schemes("", " SELECTED") + Field("Name:", "name", "Dark") +
                     Field("Filename:", "intname", "dark.css"),
                 FormButton("Save", "cm_save") + "&nbsp;&nbsp;" + FormButton("Delete", "cm_delete")));
  const std::string fixedScheme = Page("cm", schemeMenu, "COLOUR SCHEMES",
                                       schemes(" SELECTED", "") + Field("Name:", "name", "Bright") +
                                           "<TR><TD>Filename:</TD><TD>default.css</TD></TR>",
                                       FormButton("Save", "cm_save"));
  EXPECT_EQ(Chosen("cm", "2"), fixedScheme);
  for (const char* file : {"", "other.css"}) {
    EXPECT_EQ(Post("p=a&act=cm_save", {{"id", "2"}, {"name", "Bright"}, {"intname", file}}).Body,
              fixedScheme +
                  "<SCRIPT LANGUAGE=\"javascript\">\r\n<!--\r\nalert('Filename field is empty.\\n');\r\n"
                  "//-->\r\n</SCRIPT>\r\n");
  }

  const std::string types = List("Current Event Types:", "New Type",
                                 "<OPTION VALUE=\"1\" SELECTED>Trip (trip.gif)"
                                 "<OPTION VALUE=\"2\">Call (call.gif)");
  EXPECT_EQ(Chosen("tm", "1"),
            Page("tm", kUserButton + kGroupButton + kSchemeButton, "EVENT TYPES",
                 types + Field("Name:", "name", "Trip") + Field("Image File:", "intname", "trip.gif"),
                 FormButton("Save", "tm_save") + "&nbsp;&nbsp;" + FormButton("Delete", "tm_delete")));
  Run(Statement("UPDATE EventTypes SET FileName = 'default.css' WHERE TypeID = 1"));
  EXPECT_EQ(Chosen("tm", "1").find("tm_delete"), std::string::npos);
}

TEST_F(AdminPages, TakeNamesAndPasswordsForWhatTheyAre) {
  Run(Statement("UPDATE Calendars SET FriendlyName = '<B>Sales' WHERE Name = 'sales'"));
  Run(Statement("UPDATE Calendars SET Password = 'a&lt;b' WHERE Name = 'anna'"));
  const std::string id = Read(Statement("SELECT CalendarID FROM Calendars WHERE Name = 'anna'"));
  const std::string page = Post("p=a&act=um_list", {{"id", id}}).Body;
  EXPECT_NE(page.find("&lt;B>Sales (sales)"), std::string::npos);
  EXPECT_NE(page.find("NAME=\"password\" VALUE=\"a&amp;lt;b\""), std::string::npos);
}

TEST_F(AdminPages, AreTheAdministratorsAlone) {
  const std::string anna = IdOf("anna");
  LogIn("anna", "secret");
  for (const char* query : {"p=a", "p=a&act=gm_list", "p=a&act=um_delete", "p=a&act=um_save"})
    EXPECT_EQ(Post(query, {{"id", anna}}).Body, "You don't have rights for this.") << query;
  EXPECT_EQ(IdOf("anna"), anna);
}

TEST_F(AdminPages, RefuseWhatCannotBeSavedInOneAlert) {
  struct Case {
    const char* Action;
    FakeHost::Fields Form;
    const char* Alert;
  };
  const std::string anna = IdOf("anna");
  const std::string sales = IdOf("sales");
  const Case cases[] = {
      {"um_save", {}, "Name field is empty.\\nLogin Name field is empty.\\nPassword field is empty.\\n"},
      {"um_save",
       {{"name", "\""}, {"intname", "2004"}, {"password", "a b"}},
       "Name field must not contain quotes.\\nLogin Name field must contain letters of the alphabet.\\n"
       "Password field must not contain spaces.\\n"},
      {"um_save",
       {{"name", "N"}, {"intname", "an-na"}, {"password", "p"}},
       "Login Name field may only contain alphanumeric characters.\\n"},
      {"um_save",
       {{"name", "N"}, {"intname", "änna"}, {"password", "p"}},
       "Login Name field may only contain alphanumeric characters.\\n"},
      {"um_save",
       {{"name", "N"}, {"intname", "-5"}, {"password", "p"}},
       "Login Name field may only contain alphanumeric characters.\\n"},
      {"um_save",
       {{"name", "N"}, {"intname", "ANNA"}, {"password", "p"}},
       "Login Name ANNA is already in use.\\n"},
      {"um_save",
       {{"id", anna}, {"name", "N"}, {"intname", "sales"}, {"password", "p"}},
       "Login Name sales is already in use.\\n"},
      {"gm_save", {{"name", ""}}, "Name field is empty.\\n"},
      {"gm_save",
       {{"id", sales}, {"name", "\""}, {"intname", "x'; y"}},
       "Name field must not contain quotes.\\n"
       "Internal Name field may only contain alphanumeric characters.\\n"},
      {"gm_save",
       {{"id", sales}, {"name", "N"}, {"intname", "ADMIN"}},
       "Internal Name ADMIN is already in use.\\n"},
      {"tm_save", {{"name", "Trip"}}, "Filename field is empty.\\n"},
      {"cm_save", {{"intname", "x.css"}}, "Name field is empty.\\n"},
  };
  const auto rows = [&] {
    std::string all;
    for (const char* name : {"admin", "anna", "ben", "default", "sales", "staff"}) {
      all += Read(Statement("SELECT FriendlyName FROM Calendars WHERE Name = '{}'", name)) + "\n";
    }
    return all + Read(Statement("SELECT Count(CalendarID) AS N FROM Calendars")) +
           Read(Statement("SELECT Count(TypeID) AS N FROM EventTypes")) +
           Read(Statement("SELECT Count(SheetID) AS N FROM StyleSheets"));
  };
  const std::string before = rows();
  for (const Case& refused : cases) {
    const Answer& answer = Post(std::string("p=a&cd=nonsense&act=") + refused.Action, refused.Form);
    EXPECT_EQ(AlertOf(answer.Body), refused.Alert) << refused.Action;
    EXPECT_EQ(answer.RedirectedTo, "");
  }
  EXPECT_EQ(rows(), before);

  const std::string kept = Post("p=a&act=um_save", {{"id", anna},
                                                    {"name", "Ann O'Dea"},
                                                    {"intname", "admin"},
                                                    {"password", "x\"y z"},
                                                    {"memberships", "staff"},
                                                    {"hide", "yes"}})
                               .Body;
  for (const std::string& piece :
       {Field("Name:", "name", "Ann O'Dea"), Field("Login Name:", "intname", "admin"), Password("x&quot;y z"),
        kHidden, std::string("<OPTION VALUE=\"staff\" SELECTED>"), FormButton("Save", "um_save") + "</TD>"}) {
    EXPECT_NE(kept.find(piece), std::string::npos) << piece;
  }
}

}  // namespace
}  // namespace orlune::testing
