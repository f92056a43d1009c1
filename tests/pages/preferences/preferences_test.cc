#include "support/calendar_fixture.h"
#include "support/page_text.h"

namespace orlune::testing {
namespace {

std::string HourList(const std::string& name, int selected) {
  std::string list = "<SELECT NAME=\"" + name + "\">\r\n";
  for (int hour = 0; hour < 24; ++hour) {
    list += std::string("<OPTION") + (hour == selected ? " SELECTED" : "") + ">" + (hour < 10 ? "0" : "") +
            std::to_string(hour) + ":00\r\n";
  }
  return list + "</SELECT>\r\n";
}

const std::string kTableEnd = "</TD></TR></TABLE>\r\n";

/// One of the two pages: its form posts to the action `action`; `end` closes its tables.
std::string FormPage(const std::string& action, const std::string& caption, const std::string& buttons,
                     const std::string& rows, const std::string& submit, const std::string& end) {
  return "<HTML><HEAD>\r\n<TITLE>Orlune v1.0.0</TITLE>\r\n"
         "<LINK REL=stylesheet HREF=\"css/dark.css\" TYPE=text/css>\r\n</HEAD><BODY>\r\n\r\n"
         "<FORM METHOD=post ACTION=\"/cal.asp?p=p&act=" +
         action +
         "\" NAME=\"acForm\"><TABLE ALIGN=CENTER WIDTH=70%>\r\n<TR CLASS=\"plain\"><TD><FONT "
         "CLASS=\"caltitle\">" +
         caption + "</FONT></TD><TD ALIGN=RIGHT>&nbsp;" + Button("p=c", "View Calendar", "cal.gif") +
         buttons + Button("p=p&act=groups", "Edit Group Views", "pref_groups.gif") +
         "</TD></TR>\r\n<TR><TD COLSPAN=2 CLASS=\"background\">\r\n<TABLE CELLSPACING=0.5 ALIGN=CENTER "
         "WIDTH=100%><TR><TD><TABLE WIDTH=100% CELLSPACING=10 ALIGN=CENTER>" +
         rows + "<TR><TD ALIGN=CENTER CLASS=\"captions\"><INPUT TYPE=submit VALUE=\"" + submit + "\">" + end +
         FooterOfAnna() + "</FORM>\r\n\r\n</BODY></HTML>";
}

class Preferences : public CalendarFixture {
 protected:
  Preferences() {
    Run(Statement("INSERT INTO StyleSheets (SheetName, SheetFile) VALUES ('Gone', 'gone.css')"));
    LogIn("anna", "secret");
  }

  /// Everything that preferences store of `name`, in the order of the form.
  std::string Stored(std::string_view name) {
    std::string stored;
    for (const SqlLiteral& column :
         {SqlLiteral("StartMode"), SqlLiteral("FirstDayOfWeek"), SqlLiteral("Weekend"),
          SqlLiteral("ClockMode"), SqlLiteral("DayBegin"), SqlLiteral("DayEnd"), SqlLiteral("StyleSheet")}) {
      stored += Read(Statement("SELECT {} FROM Calendars WHERE Name = '{}'", column, name)) + "|";
    }
    return stored;
  }
  std::string Password(std::string_view name) {
    return Read(Statement("SELECT Password FROM Calendars WHERE Name = '{}'", name));
  }

  /// A form that differs from what is stored for anna in every field.
  const FakeHost::Fields changed_{{"mode", "day"}, {"firstday", "7"},     {"weekend", "5, 6"},
                                  {"clock", "12"}, {"daybegin", "00:00"}, {"dayend", "11:00 PM"},
                                  {"css", "2"}};
};

TEST_F(Preferences, AreShownAsTheyAreStored) {
  const std::string rows =
      "<TR><TD>Start Mode (at login):</TD><TD><SELECT NAME=\"mode\"><OPTION VALUE=\"day\">Day"
      "<OPTION VALUE=\"week\" SELECTED>Week<OPTION VALUE=\"month\">Month</SELECT></TD></TR>"
      "<TR><TD>First Day Of The Week:</TD><TD><SELECT NAME=\"firstday\"><OPTION VALUE=\"1\">Sunday"
      "<OPTION VALUE=\"2\" SELECTED>Monday<OPTION VALUE=\"3\">Tuesday<OPTION VALUE=\"4\">Wednesday"
      "<OPTION VALUE=\"5\">Thursday<OPTION VALUE=\"6\">Friday<OPTION VALUE=\"7\">Saturday</SELECT></TD></TR>"
      "<TR><TD>Weekend Days:</TD><TD><SELECT NAME=\"weekend\" MULTIPLE SIZE=4>"
      "<OPTION VALUE=\"1\" SELECTED>Sunday<OPTION VALUE=\"2\">Monday<OPTION VALUE=\"3\">Tuesday"
      "<OPTION VALUE=\"4\">Wednesday<OPTION VALUE=\"5\">Thursday<OPTION VALUE=\"6\">Friday"
      "<OPTION VALUE=\"7\" SELECTED>Saturday</SELECT></TD></TR>"
      "<TR><TD>Clock Mode:</TD><TD><INPUT TYPE=radio NAME=\"clock\" VALUE=\"12\">12-hour clock<BR>"
      "<INPUT TYPE=radio NAME=\"clock\" VALUE=\"24\" CHECKED>24-hour clock</TD></TR>"
      "<TR><TD>Day View Begins At:</TD><TD>" +
      HourList("daybegin", 8) + "</TD></TR><TR><TD>Day View Ends At:</TD><TD>" + HourList("dayend", 17) +
      "</TD></TR><TR><TD>Colour Scheme:</TD><TD><SELECT NAME=\"css\"><OPTION VALUE=\"1\" SELECTED>Dark"
      "<OPTION VALUE=\"2\">Gone</SELECT></TD></TR>";
  EXPECT_EQ(Get("p=p").Body,
            FormPage("save", "PREFERENCES", Button("p=p&act=login", "Change Password", "pref_passwd.gif"),
                     rows, "Save Changes", kTableEnd));
  configure_ = [](Orlune& page) { page.NoLoginChange(true); };
  EXPECT_EQ(Get("p=p").Body, FormPage("save", "PREFERENCES", "", rows, "Save Changes", kTableEnd));
  EXPECT_EQ(Get("p=p&act=login").Body,
            FormPage("lsave", "CHANGE PASSWORD", Button("p=p", "Edit Preferences", "prefs.gif"),
                     "<TR><TD>Old Password:</TD><TD><INPUT TYPE=password NAME=\"oldpw\"></TD></TR>"
                     "<TR><TD>New Password:</TD><TD><INPUT TYPE=password NAME=\"newpw1\"></TD></TR>"
                     "<TR><TD>New Password (again):</TD><TD><INPUT TYPE=password NAME=\"newpw2\"></TD></TR>",
                     "Change Password", kTableEnd + kTableEnd));
}

TEST_F(Preferences, CountFromTheNextPageOn) {
  const std::string ben = Stored("ben");
  EXPECT_EQ(Post("p=p&act=save", changed_).RedirectedTo, "/cal.asp");
  EXPECT_EQ(Stored("anna"), "day|7|5, 6|12|0|23|2|");
  EXPECT_EQ(Stored("ben"), ben);
  const std::string week = Get("p=c&dm=week").Body;
  EXPECT_NE(week.find("HREF=\"css/default.css\""), std::string::npos);
  EXPECT_EQ(Cut(week, "WIDTH=14%", "day"), "WIDTH=14% CLASS=\"captions\">Saturday");
  EXPECT_NE(Get("p=c&dm=day").Body.find("11:00 PM"), std::string::npos);
  EXPECT_NE(Get("p=p").Body.find("<OPTION SELECTED>11:00 PM"), std::string::npos);

  FakeHost::Fields form = changed_;
  form.erase("weekend");
  Post("p=p&act=save", form);
  EXPECT_EQ(Stored("anna"), "day|7||12|0|23|2|");
  EXPECT_EQ(Get("p=c&dm=month").Body.find("CLASS=\"weekend\""), std::string::npos);
}

TEST_F(Preferences, ShowAgainWhatWasPostedWhenTheDayHasNoHours) {
  const std::string before = Stored("anna");
  struct Case {
    const char* Begin;
    const char* End;
    const char* Selected;
  };
  for (const Case& hours : {Case{"08:00", "08:00", "08:00"},
                            {"09:00 PM", "08:00", "21:00"},
                            {"10:45", "later", "10:00"},
                            {"soon", "17:00", "17:00"},
                            {"", "", ""}}) {
    FakeHost::Fields form = changed_;
    form["daybegin"] = hours.Begin;
    form["dayend"] = hours.End;
    const Answer& answer = Post("p=p&act=save", form);
    EXPECT_EQ(answer.RedirectedTo, "") << hours.Begin;
    EXPECT_NE(answer.Body.find("alert('The start time must be earlier than the end time.\\n');"),
              std::string::npos)
        << hours.Begin;
    EXPECT_EQ(Cut(answer.Body, "<OPTION SELECTED>", ":00"),
              *hours.Selected ? "<OPTION SELECTED>" + std::string(hours.Selected) : "");
    EXPECT_NE(answer.Body.find("<OPTION VALUE=\"day\" SELECTED>"), std::string::npos);
    EXPECT_NE(answer.Body.find("<OPTION VALUE=\"2\" SELECTED>Gone"), std::string::npos);
  }
  EXPECT_EQ(Stored("anna"), before);
}

TEST_F(Preferences, KeepWhatIsStoredWhenTheFormOffersNoSuchChoice) {
  const std::string before = Stored("anna");
  const std::pair<const char*, const char*> cases[] = {
      {"mode", "year"},   {"mode", ""},        {"firstday", "0"},   {"firstday", "9"},  {"firstday", "2, 3"},
      {"firstday", "II"}, {"weekend", "1, 8"}, {"weekend", "7, 1"}, {"weekend", "1,7"}, {"weekend", ", "},
      {"weekend", "'"},   {"clock", "13"},     {"clock", ""},       {"css", "3"},       {"css", "abc"},
      {"css", "1, 2"},    {"css", ""}};
  for (const auto& [field, value] : cases) {
    FakeHost::Fields form = changed_;
    form[field] = value;
    EXPECT_EQ(Post("p=p&act=save", form).RedirectedTo, "/cal.asp");
    EXPECT_EQ(Stored("anna"), before) << field << " = " << value;
  }
}

TEST_F(Preferences, BelongToWhoIsLoggedIn) {
  configure_ = [](Orlune& page) { page.LoginName(""); };
  Get("p=l");
  Run(Statement("INSERT INTO Calendars (Name, Password, IsGroup, StartMode) VALUES ('', '', no, 'month')"));
  const std::string admin = Stored("admin");
  const std::string nameless = Stored("");
  EXPECT_NE(Get("p=p").Body.find("PREFERENCES"), std::string::npos);
  EXPECT_NE(Post("p=p&act=save", changed_).Body.find("<P>You don't have rights for this.<P>"),
            std::string::npos);
  EXPECT_NE(Post("p=p&act=lsave", {{"newpw1", "x"}, {"newpw2", "x"}}).Body.find("rights for this."),
            std::string::npos);
  EXPECT_EQ(Stored("admin"), admin);
  EXPECT_EQ(Stored(""), nameless);
  EXPECT_EQ(Password("admin"), "demo1");
  EXPECT_EQ(Password(""), "");
}

TEST_F(Preferences, RefuseAPasswordForTheFirstReasonThatThereIs) {
  struct Case {
    const char* Old;
    const char* New;
    const char* Again;
    const char* Reason;
  };
  for (const Case& attempt :
       {Case{"Secret", "a", "b", "Incorrect password."},
        {"", "new", "new", "Incorrect password."},
        {"secret", "a b", "a b", "Password field must not contain spaces."},
        {"secret", "a b", "c", "Password field must not contain spaces."},
        {"secret", "new", "New", "Please type the same password twice in the New Password fields."}}) {
    const Answer& answer =
        Post("p=p&act=lsave", {{"oldpw", attempt.Old}, {"newpw1", attempt.New}, {"newpw2", attempt.Again}});
    EXPECT_EQ(answer.RedirectedTo, "");
    EXPECT_EQ(Cut(answer.Body, "alert(", ";"), "alert('" + std::string(attempt.Reason) + "\\n');");
    EXPECT_NE(answer.Body.find("<INPUT TYPE=password NAME=\"oldpw\">"), std::string::npos);
  }
  EXPECT_EQ(Password("anna"), "secret");

  LogIn("ben", "");
  Post("p=p&act=lsave", {{"newpw1", "new"}, {"newpw2", "new"}});
  EXPECT_EQ(Read(Statement("SELECT Name FROM Calendars WHERE Password Is Null AND Name = 'ben'")), "ben");
}

TEST_F(Preferences, ChangeThePasswordOfTheUserAlone) {
  for (const auto& [old, wanted] : {std::pair{"secret", "it's\"new\""}, {"it's\"new\"", ""}}) {
    EXPECT_EQ(Post("p=p&act=lsave", {{"oldpw", old}, {"newpw1", wanted}, {"newpw2", wanted}}).RedirectedTo,
              "/cal.asp?p=p");
    EXPECT_EQ(Password("anna"), wanted);
  }
  EXPECT_EQ(Password("admin"), "demo1");
  LogIn("anna", "secret");
  EXPECT_EQ(host_.SessionValues["Login"], "");
}

}  // namespace
}  // namespace orlune::testing
