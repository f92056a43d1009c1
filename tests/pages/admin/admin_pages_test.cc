#include "support/calendar_fixture.h"
#include "support/golden_page.h"
#include "support/page_text.h"

namespace orlune::testing {
namespace {

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
  const std::string empty = Get("p=a").Body;
  EXPECT_TRUE(IsGoldenPage("admin/new_user", empty));
  for (const char* query : {"p=a&act=um_list", "p=a&act=um", "p=a&act=um_x", "p=a&act=xx_save"})
    EXPECT_EQ(Get(query).Body, empty) << query;
  for (const char* id : {"0", "x", "1 OR 1=1", "99999999999999999999", "-1"})
    EXPECT_EQ(Chosen("um", id), empty) << id;
  EXPECT_EQ(Chosen("um", IdOf("sales")), empty) << "a group is no user";

  Run(Statement("UPDATE Calendars SET MemberOfGroups = 'salesmen, STAFF' WHERE Name = 'anna'"));
  EXPECT_TRUE(IsGoldenPage("admin/user", Chosen("um", IdOf("anna"))));
  EXPECT_TRUE(IsGoldenPage("admin/administrator", Chosen("um", IdOf("admin"))));
  configure_ = [](Orlune& page) { page.DemoMode(true); };
  EXPECT_TRUE(IsGoldenPage("admin/administrator_in_demo", Chosen("um", IdOf("admin"))));
}

TEST_F(AdminPages, GroupsAreListedAndEdited) {
  const std::string empty = Get("p=a&act=gm_list").Body;
  EXPECT_TRUE(IsGoldenPage("admin/new_group", empty));
  EXPECT_EQ(Chosen("gm", IdOf("anna")), empty) << "a user is no group";
  Run(
      Statement("UPDATE Calendars SET MemberOfGroups = 'salesmen', AdminOfGroups = 'staff, Sales' "
                "WHERE Name = 'ben'"));
  EXPECT_TRUE(IsGoldenPage("admin/group", Chosen("gm", IdOf("sales"))));
  EXPECT_TRUE(IsGoldenPage("admin/everybody", Chosen("gm", IdOf("default"))));
}

TEST_F(AdminPages, SchemesAndTypesAreListedAndEdited) {
  Run(Statement("INSERT INTO StyleSheets (SheetName, SheetFile) VALUES ('Bright', 'default.css')"));
  Run(Statement("INSERT INTO EventTypes (TypeName, FileName) VALUES ('Trip', 'trip.gif')"));
  Run(Statement("INSERT INTO EventTypes (TypeName, FileName) VALUES ('Call', 'call.gif')"));
  EXPECT_TRUE(IsGoldenPage("admin/new_scheme", Get("p=a&act=cm_list").Body));
  EXPECT_TRUE(IsGoldenPage("admin/scheme", Chosen("cm", "1")));
  EXPECT_TRUE(IsGoldenPage("admin/fixed_scheme", Chosen("cm", "2")));
  for (const char* file : {"", "other.css"}) {
    const Answer& refused = Post("p=a&act=cm_save", {{"id", "2"}, {"name", "Bright"}, {"intname", file}});
    EXPECT_TRUE(IsGoldenPage("admin/fixed_scheme_refused", refused.Body)) << file;
  }
  EXPECT_TRUE(IsGoldenPage("admin/type", Chosen("tm", "1")));
  Run(Statement("UPDATE EventTypes SET FileName = 'default.css' WHERE TypeID = 1"));
  EXPECT_EQ(Chosen("tm", "1").find("tm_delete"), std::string::npos);
}

TEST_F(AdminPages, EscapeNamesAndPasswords) {
  Run(Statement("UPDATE Calendars SET FriendlyName = '<B>Sales' WHERE Name = 'sales'"));
  Run(Statement("UPDATE Calendars SET Password = 'a&lt;b' WHERE Name = 'anna'"));
  const std::string id = Read(Statement("SELECT CalendarID FROM Calendars WHERE Name = 'anna'"));
  const std::string page = Post("p=a&act=um_list", {{"id", id}}).Body;
  EXPECT_NE(page.find("&lt;B>Sales (sales)"), std::string::npos);
  EXPECT_NE(page.find("NAME=\"password\" VALUE=\"a&amp;lt;b\""), std::string::npos);
}

TEST_F(AdminPages, RequireTheAdministrator) {
  const std::string anna = IdOf("anna");
  LogIn("anna", "secret");
  for (const char* query : {"p=a", "p=a&act=gm_list", "p=a&act=um_delete", "p=a&act=um_save"})
    EXPECT_EQ(Post(query, {{"id", anna}}).Body, "You don't have rights for this.") << query;
  EXPECT_EQ(IdOf("anna"), anna);
}

TEST_F(AdminPages, ReportAllErrorsInOneAlert) {
  struct Case {
    const char* Action;
    FakeHost::Fields Form;
    std::string Alert;
  };
  const std::string anna = IdOf("anna");
  const std::string sales = IdOf("sales");
  const std::string alphanumeric = "Login Name field may only contain alphanumeric characters.\\n";
  const auto named = [](const char* loginName) {
    return FakeHost::Fields{{"name", "N"}, {"intname", loginName}, {"password", "p"}};
  };
  const Case cases[] = {
      {"um_save", {}, "Name field is empty.\\nLogin Name field is empty.\\nPassword field is empty.\\n"},
      {"um_save",
       {{"name", "\""}, {"intname", "2004"}, {"password", "a b"}},
       "Name field must not contain quotes.\\nLogin Name field must contain letters of the alphabet.\\n"
       "Password field must not contain spaces.\\n"},
      {"um_save", named("an-na"), alphanumeric},
      {"um_save", named("änna"), alphanumeric},
      {"um_save", named("-5"), alphanumeric},
      {"um_save", named("ANNA"), "Login Name ANNA is already in use.\\n"},
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
    std::vector<std::string> all =
        ReadRows(Statement("SELECT * FROM Calendars"), {"CalendarID", "FriendlyName"});
    all.push_back(Read(Statement("SELECT Count(TypeID) AS N FROM EventTypes")));
    all.push_back(Read(Statement("SELECT Count(SheetID) AS N FROM StyleSheets")));
    return all;
  };
  const std::vector<std::string> before = rows();
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
  EXPECT_TRUE(IsGoldenPage("admin/user_refused", kept));
}

}  // namespace
}  // namespace orlune::testing
