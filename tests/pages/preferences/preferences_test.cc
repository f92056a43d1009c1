#include "support/calendar_fixture.h"
#include "support/golden_page.h"
#include "support/page_text.h"

namespace orlune::testing {
namespace {

class Preferences : public CalendarFixture {
 protected:
  Preferences() {
    Run(Statement("INSERT INTO StyleSheets (SheetName, SheetFile) VALUES ('Gone', 'gone.css')"));
    LogIn("anna", "secret");
  }

  /// The stored preferences of `name`, in the order of the form.
  std::string Stored(std::string_view name) {
    return ReadRows(
               Statement("SELECT * FROM Calendars WHERE Name = '{}'", name),
               {"StartMode", "FirstDayOfWeek", "Weekend", "ClockMode", "DayBegin", "DayEnd", "StyleSheet"})
        .at(0);
  }
  std::string Password(std::string_view name) {
    return Read(Statement("SELECT Password FROM Calendars WHERE Name = '{}'", name));
  }

  /// A form that differs from anna's stored preferences in every field.
  const FakeHost::Fields changed_{{"mode", "day"}, {"firstday", "7"},     {"weekend", "5, 6"},
                                  {"clock", "12"}, {"daybegin", "00:00"}, {"dayend", "11:00 PM"},
                                  {"css", "2"}};
};

TEST_F(Preferences, AreShownAsTheyAreStored) {
  EXPECT_TRUE(IsGoldenPage("preferences/preferences", Get("p=p").Body));
  configure_ = [](Orlune& page) { page.NoLoginChange(true); };
  EXPECT_TRUE(IsGoldenPage("preferences/preferences_without_login_change", Get("p=p").Body));
  EXPECT_TRUE(IsGoldenPage("preferences/password", Get("p=p&act=login").Body));
}

TEST_F(Preferences, ApplyFromTheNextPageOn) {
  const std::string ben = Stored("ben");
  EXPECT_EQ(Post("p=p&act=save", changed_).RedirectedTo, "/cal.asp");
  EXPECT_EQ(Stored("anna"), "day|7|5, 6|12|0|23|2");
  EXPECT_EQ(Stored("ben"), ben);
  const std::string week = Get("p=c&dm=week").Body;
  EXPECT_NE(week.find("HREF=\"css/default.css\""), std::string::npos);
  EXPECT_EQ(Cut(week, "WIDTH=14%", "day"), "WIDTH=14% CLASS=\"captions\">Saturday");
  EXPECT_NE(Get("p=c&dm=day").Body.find("11:00 PM"), std::string::npos);
  EXPECT_NE(Get("p=p").Body.find("<OPTION SELECTED>11:00 PM"), std::string::npos);

  FakeHost::Fields form = changed_;
  form.erase("weekend");
  Post("p=p&act=save", form);
  EXPECT_EQ(Stored("anna"), "day|7||12|0|23|2");
  EXPECT_EQ(Get("p=c&dm=month").Body.find("CLASS=\"weekend\""), std::string::npos);
}

TEST_F(Preferences, AreShownAgainWhenTheDayHasNoHours) {
  const std::string before = Stored("anna");
  for (const auto& [begin, end, selected] : {std::tuple{"08:00", "08:00", "08:00"},
                                             {"09:00 PM", "08:00", "21:00"},
                                             {"10:45", "later", "10:00"},
                                             {"soon", "17:00", "17:00"},
                                             {"", "", ""}}) {
    FakeHost::Fields form = changed_;
    form["daybegin"] = begin;
    form["dayend"] = end;
    const Answer& answer = Post("p=p&act=save", form);
    EXPECT_EQ(AlertOf(answer.Body), "The start time must be earlier than the end time.\\n") << begin;
    EXPECT_EQ(Cut(answer.Body, "<OPTION SELECTED>", ":00"),
              *selected ? "<OPTION SELECTED>" + std::string(selected) : "");
    EXPECT_NE(answer.Body.find("<OPTION VALUE=\"day\" SELECTED>"), std::string::npos);
    EXPECT_NE(answer.Body.find("<OPTION VALUE=\"2\" SELECTED>Gone"), std::string::npos);
  }
  EXPECT_EQ(Stored("anna"), before);
}

TEST_F(Preferences, IgnoreValuesThatTheFormDoesNotOffer) {
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

TEST_F(Preferences, RequireALogin) {
  configure_ = [](Orlune& page) { page.LoginName(""); };
  Get("p=l");
  Run(Statement("INSERT INTO Calendars (Name, Password, IsGroup, StartMode) VALUES ('', '', no, 'month')"));
  const auto stored = [&] { return Stored("admin") + Password("admin") + Stored("") + Password(""); };
  const std::string before = stored();
  EXPECT_NE(Get("p=p").Body.find("PREFERENCES"), std::string::npos);
  EXPECT_NE(Post("p=p&act=save", changed_).Body.find("<P>You don't have rights for this.<P>"),
            std::string::npos);
  EXPECT_NE(Post("p=p&act=lsave", {{"newpw1", "x"}, {"newpw2", "x"}}).Body.find("rights for this."),
            std::string::npos);
  EXPECT_EQ(stored(), before);
}

TEST_F(Preferences, RefuseAPasswordForTheFirstReason) {
  for (const auto& [old, wanted, again, reason] :
       {std::tuple{"Secret", "a", "b", "Incorrect password."},
        {"", "new", "new", "Incorrect password."},
        {"secret", "a b", "a b", "Password field must not contain spaces."},
        {"secret", "a b", "c", "Password field must not contain spaces."},
        {"secret", "new", "New", "Please type the same password twice in the New Password fields."}}) {
    const Answer& answer = Post("p=p&act=lsave", {{"oldpw", old}, {"newpw1", wanted}, {"newpw2", again}});
    EXPECT_EQ(AlertOf(answer.Body), reason + std::string("\\n"));
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
