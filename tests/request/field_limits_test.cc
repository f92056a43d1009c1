#include "request/field_limits.h"

#include "support/calendar_fixture.h"
#include "support/page_text.h"

namespace orlune::testing {
namespace {

std::string Repeated(const char* letter, int times) {
  std::string text;
  for (int i = 0; i < times; ++i) text += letter;
  return text;
}

class FieldLimits : public CalendarFixture {
 protected:
  FieldLimits() { LogIn("anna", "secret"); }

  static FakeHost::Fields Event(const std::string& title, const std::string& comments) {
    return {{"title", title},    {"addinfo", comments},  {"calendar", "anna"},
            {"reptype", "none"}, {"date1", "3/20/2004"}, {"vastaanottaja", "ben"},
            {"id", ""}};
  }
  static FakeHost::Fields Message(const std::string& recipients, const std::string& subject,
                                  const std::string& content) {
    return {{"Vastaanottaja", recipients}, {"Otsikko", subject}, {"Sisalto", content}};
  }
  /// How many rows each table has, and the users' passwords.
  std::vector<std::string> Stored() {
    std::vector<std::string> stored =
        ReadRows(Statement("SELECT Name, Password FROM Calendars"), {"Name", "Password"});
    for (const SqlLiteral table : {SqlLiteral("Events"), SqlLiteral("Messages"), SqlLiteral("GroupViews"),
                                   SqlLiteral("StyleSheets"), SqlLiteral("EventTypes")})
      stored.push_back(std::to_string(ReadRows(Statement("SELECT * FROM {}", table), {}).size()));
    return stored;
  }
};

TEST_F(FieldLimits, HoldForEverythingThatIsTyped) {
  AddEvent("anna", "Own", "BeginDate, Type", "'3/15/2004', 'none'");
  const std::string title = Repeated("\xC3\xB6", 256);
  const std::string name = Repeated("x", 256);
  const std::string text(kMostTextBytes + 1, 'x');
  const std::string ofTitle = " is too long (at most 255 characters).\\n";
  const std::string ofShortName = " is too long (at most 50 characters).\\n";
  const std::string ofText = " is too long (at most 64 kB).\\n";
  const auto record = [](const std::string& shown, const std::string& internal, const std::string& password) {
    return FakeHost::Fields{{"name", shown}, {"intname", internal}, {"password", password}};
  };
  const struct {
    const char *User, *Query;
    FakeHost::Fields Form;
    std::string Alert;
  } cases[] = {
      {"anna", "p=e&act=save", Event(title, ""), "Event Title" + ofTitle},
      {"anna", "p=e&act=save", Event("t", text), "Comments" + ofText},
      {"anna", "p=e&act=send", Event(title, ""), "Event Title" + ofTitle},
      {"anna", "p=e&act=notify&id=1", {{"addinfo", text}}, "Comments" + ofText},
      {"anna", "p=m&act=send", Message("ben", title, "c"), "Subject" + ofTitle},
      {"anna", "p=m&act=send", Message("ben", "s", text), "NEW MESSAGE" + ofText},
      {"anna",
       "p=p&act=lsave",
       {{"oldpw", "secret"}, {"newpw1", name}, {"newpw2", name}},
       "New Password" + ofTitle},
      {"anna", "p=p&act=gsave", {{"name", name.substr(0, 51)}, {"cals", "anna"}}, "Name" + ofShortName},
      {"admin", "p=a&act=um_save", record(name, "x1", "pw"), "Name" + ofTitle},
      {"admin", "p=a&act=um_save", record("x", name.substr(0, 51), "pw"), "Login Name" + ofShortName},
      {"admin", "p=a&act=um_save", record("x", "x1", name), "Password" + ofTitle},
      {"admin", "p=a&act=gm_save", record(name, "", ""), "Name" + ofTitle},
      {"admin", "p=a&act=cm_save", record(name.substr(0, 51), "x.css", ""), "Name" + ofShortName},
      {"admin", "p=a&act=tm_save", record("x", name.substr(0, 51), ""), "Image File" + ofShortName},
  };
  const auto stored = Stored();
  for (const auto& c : cases) {
    LogIn(c.User, c.User == std::string("anna") ? "secret" : "demo1");
    EXPECT_EQ(AlertOf(Post(c.Query, c.Form).Body), c.Alert) << c.Query;
    EXPECT_EQ(Stored(), stored) << c.Query;
  }
  LogIn("anna", "secret");
  EXPECT_EQ(Post("p=e&act=save", Event(Repeated("\xC3\xB6", 255), text.substr(1))).RedirectedTo, "/cal.asp");
}

TEST_F(FieldLimits, LetStoredTextsStayAsLongAsTheyAre) {
  const int id = AddEvent("anna", Repeated("x", 300), "BeginDate, Type", "'3/15/2004', 'none'");
  FakeHost::Fields form = Event(Repeated("y", 300), "changed");
  form["id"] = std::to_string(id);
  EXPECT_EQ(Post("p=e&act=save", form).RedirectedTo, "/cal.asp");
  form["title"] = Repeated("y", 301);
  EXPECT_NE(AlertOf(Post("p=e&act=save", form).Body), "");
}

TEST_F(FieldLimits, HoldForAllCopiesOfOneSending) {
  place_.RunNative(
      "INSERT INTO \"Calendars\" (\"Name\", \"MemberOfGroups\") WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL "
      "SELECT i + 1 FROM n WHERE i < 1100) SELECT 'u' || i, 'staff' FROM n");
  const std::string text(kMostTextBytes, 'x');
  for (const auto& [query, form] : {std::pair("p=m&act=send", Message("staff", "s", text)),
                                    std::pair("p=e&act=send", Event("t", text))}) {
    FakeHost::Fields toStaff = form;
    if (toStaff.contains("title")) toStaff["vastaanottaja"] = "staff";
    EXPECT_EQ(AlertOf(Post(query, toStaff).Body), "This is too long to be sent to 1101 recipients.\\n");
  }
  EXPECT_EQ(Read(Statement("SELECT Count(MessageID) AS Total FROM Messages")), "0");
  EXPECT_EQ(Post("p=m&act=send", Message("staff", "s", "short")).RedirectedTo, "/cal.asp?p=m");
}

}  // namespace
}  // namespace orlune::testing
