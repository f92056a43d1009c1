#include "support/calendar_fixture.h"

namespace orlune::testing {
namespace {

class AdminChanges : public CalendarFixture {
 protected:
  AdminChanges() { LogIn("admin", "demo1"); }

  std::string IdOf(std::string_view calendar) {
    return Read(Statement("SELECT CalendarID FROM Calendars WHERE Name = '{}'", calendar));
  }
  std::string ColumnOf(std::string_view calendar, SqlLiteral column) {
    return Read(Statement("SELECT {} FROM Calendars WHERE Name = '{}'", column, calendar));
  }
  std::string ListsOf(std::string_view user) {
    return ColumnOf(user, "MemberOfGroups") + "|" + ColumnOf(user, "AdminOfGroups");
  }
  using Rows = std::vector<std::string>;
  Rows Views() {
    return ReadRows(Statement("SELECT * FROM GroupViews ORDER BY GroupID"),
                    {"Name", "Owner", "Calendars", "BackGround", "ForeGround"});
  }
  Rows Owners() { return ReadRows(Statement("SELECT * FROM Events ORDER BY EventID"), {"Owner"}); }
  Rows Messages() {
    return ReadRows(Statement("SELECT * FROM Messages ORDER BY MessageID"), {"Sender", "Recipient"});
  }
  /// `values` of the columns from Name on.
  void AddView(SqlLiteral values) {
    Run(Statement("INSERT INTO GroupViews (Name, Owner, Calendars, BackGround, ForeGround) VALUES ({})",
                  values));
  }
  void SaveUser(std::string_view id, std::string_view loginName) {
    Act("um_save", {{"id", std::string(id)},
                    {"name", "Ann O'Dea"},
                    {"intname", std::string(loginName)},
                    {"password", "*12"},
                    {"hide", "maybe"},
                    {"memberships", "sales, , sales, nowhere"}});
  }
  /// Posts the form and expects a redirect to the list.
  void Act(const std::string& action, FakeHost::Fields form) {
    EXPECT_EQ(Post("p=a&act=" + action, std::move(form)).RedirectedTo,
              "/cal.asp?p=a&act=" + action.substr(0, 2) + "_list");
  }
  void AddThingsOfAnna();
};

void AdminChanges::AddThingsOfAnna() {
  AddEvent("anna", "Own", "BeginDate", "DateValue('3/15/2004')");
  AddEvent("Anna", "Own too", "BeginDate", "DateValue('3/16/2004')");
  AddEvent("annabel", "Another's", "BeginDate", "DateValue('3/15/2004')");
  AddView("'own', 'anna', 'ben', '', ''");
  AddView("'first', 'ben', 'anna, annabel, joanna', '#1, #2, #3', '#4, #5, #6'");
  AddView("'last', 'ben', 'ben, ANNA', ', red, blue', 'green'");
  AddView("'alone', 'admin', 'anna', '', ''");
  AddView("'near', 'admin', 'annabel, joanna', '#1', '#2'");
  Run(Statement("INSERT INTO Messages (Sender, Recipient, Viewed) VALUES ('anna', 'ben', no)"));
  Run(Statement("INSERT INTO Messages (Sender, Recipient, Viewed) VALUES ('ben', 'anna', no)"));
}

TEST_F(AdminChanges, NewUsersGetTheirPreferences) {
  SaveUser("", "Annie");
  EXPECT_EQ(ReadRows(Statement("SELECT * FROM Calendars WHERE Name = 'annie'"),
                     {"FriendlyName", "Name", "Password", "IsHidden", "IsGroup", "MemberOfGroups",
                      "AdminOfGroups", "ClockMode", "FirstDayOfWeek", "Weekend"}),
            Rows{"Ann O&#39;Dea|Annie|*12|no|no|sales, , sales, nowhere|Null|24|2|1, 7"});
  LogIn("annie", "*12");
  EXPECT_NE(Get("p=c").Body.find("Logout Annie"), std::string::npos);
}

TEST_F(AdminChanges, RenamedUsersKeepWhatIsTheirs) {
  AddThingsOfAnna();
  const std::string id = IdOf("anna");
  SaveUser(id, "zoe");
  EXPECT_EQ(IdOf("zoe"), id);
  EXPECT_EQ(ColumnOf("zoe", "ClockMode"), "24");
  EXPECT_EQ(Owners(), (Rows{"zoe", "zoe", "annabel"}));
  EXPECT_EQ(Views(), (Rows{"own|zoe|ben||", "first|ben|zoe, annabel, joanna|#1, #2, #3|#4, #5, #6",
                           "last|ben|ben, zoe|, red, blue|green", "alone|admin|zoe||",
                           "near|admin|annabel, joanna|#1|#2"}));
  EXPECT_EQ(Messages(), (Rows{"zoe|ben", "ben|zoe"}));
  SaveUser(id, "Zoe");
  EXPECT_EQ(Owners(), (Rows{"Zoe", "Zoe", "annabel"}));
  EXPECT_EQ(Views().at(3), "alone|admin|Zoe||");
}

TEST_F(AdminChanges, DeletedUsersLeaveNothingButWhatTheySent) {
  AddThingsOfAnna();
  Act("um_delete", {{"id", IdOf("anna")}});
  EXPECT_EQ(IdOf("anna"), "(none)");
  EXPECT_EQ(Owners(), Rows{"annabel"});
  EXPECT_EQ(Views(), (Rows{"first|ben|annabel, joanna|#2, #3|#5, #6", "last|ben|ben|, blue|green",
                           "alone|admin|Null|Null|Null", "near|admin|annabel, joanna|#1|#2"}));
  EXPECT_EQ(Messages(), Rows{"anna|ben"});
}

TEST_F(AdminChanges, GroupsAreNamedByThemselves) {
  for (const char* name : {"Board Room", "Board Room", "2004", "!!!", "O'Hara"})
    Act("gm_save", {{"name", name}, {"intname", "odd"}});
  EXPECT_EQ(ReadRows(Statement("SELECT * FROM Calendars WHERE CalendarID > 6 ORDER BY CalendarID"),
                     {"Name", "FriendlyName", "IsGroup", "IsHidden", "Weekend"}),
            (Rows{"boardroom|Board Room|yes|yes|1, 7", "boardroom1|Board Room|yes|yes|1, 7",
                  "2004a|2004|yes|yes|1, 7", "name|!!!|yes|yes|1, 7", "ohara|O&#39;Hara|yes|yes|1, 7"}));
}

TEST_F(AdminChanges, SavedGroupsUpdateTheListsOfUsers) {
  Run(Statement("UPDATE Calendars SET MemberOfGroups = 'salesmen, sales, staff, SALES' WHERE Name = 'anna'"));
  Run(Statement("UPDATE Calendars SET AdminOfGroups = 'presales' WHERE Name = 'ben'"));
  FakeHost::Fields form{{"id", IdOf("sales")}, {"name", "Sales"},      {"intname", "sales"},
                        {"hide", "no"},        {"memberships", "BEN"}, {"adminships", "anna, ben, nobody"}};
  Act("gm_save", form);
  EXPECT_EQ(ListsOf("anna"), "salesmen, staff|sales");
  EXPECT_EQ(ListsOf("ben"), "sales|presales, sales");
  EXPECT_EQ(ListsOf("admin"), "|");
  EXPECT_EQ(ColumnOf("sales", "IsHidden"), "no");

  AddEvent("sales", "Fair", "BeginDate", "DateValue('3/15/2004')");
  AddView("'team', 'ben', 'sales, presales', '', ''");
  form["intname"] = "Trade";
  form["memberships"] = "";
  Act("gm_save", form);
  EXPECT_EQ(ColumnOf("trade", "Name"), "Trade");
  EXPECT_EQ(ListsOf("anna"), "salesmen, staff|Trade");
  EXPECT_EQ(ListsOf("ben"), "Null|presales, Trade");
  EXPECT_EQ(Owners(), Rows{"Trade"});
  EXPECT_EQ(Views(), Rows{"team|ben|Trade, presales||"});

  Act("gm_delete", {{"id", form["id"]}});
  EXPECT_EQ(IdOf("trade"), "(none)");
  EXPECT_EQ(ListsOf("anna"), "salesmen, staff|Null");
  EXPECT_EQ(ListsOf("ben"), "Null|presales");
  EXPECT_EQ(Owners(), Rows{});
  EXPECT_EQ(Views(), Rows{"team|ben|Trade, presales||"});
}

TEST_F(AdminChanges, TypesAndSchemesAreWrittenAndDeleted) {
  const auto types = [&] {
    return ReadRows(Statement("SELECT * FROM EventTypes"), {"TypeName", "FileName"});
  };
  const auto sheets = [&] {
    return ReadRows(Statement("SELECT * FROM StyleSheets ORDER BY SheetID"), {"SheetName", "SheetFile"});
  };
  Act("tm_save", {{"name", "O'Trip"}, {"intname", "*1"}});
  EXPECT_EQ(types(), Rows{"O&#39;Trip|*1"});
  Act("tm_save", {{"id", "1"}, {"name", "Trip"}, {"intname", "trip.gif"}});
  EXPECT_EQ(types(), Rows{"Trip|trip.gif"});
  Act("tm_delete", {{"id", "1"}});
  EXPECT_EQ(types(), Rows{});
  Act("cm_save", {{"name", "Darker"}, {"intname", "dark.css"}});
  EXPECT_EQ(sheets(), (Rows{"Dark|dark.css", "Darker|dark.css"}));
  Act("cm_delete", {{"id", "2"}});
  EXPECT_EQ(sheets(), Rows{"Dark|dark.css"});
}

TEST_F(AdminChanges, ProtectedRecordsKeepTheirNames) {
  configure_ = [](Orlune& page) { page.DemoMode(true); };
  SaveUser(IdOf("admin"), "boss");
  EXPECT_EQ(ColumnOf("admin", "FriendlyName"), "Ann O&#39;Dea");
  EXPECT_EQ(ColumnOf("admin", "Password"), "demo1");
  EXPECT_EQ(ListsOf("admin"), "Null|Null");
  EXPECT_EQ(IdOf("boss"), "(none)");
  Act("gm_save", {{"id", IdOf("default")}, {"name", "All"}, {"intname", "all"}, {"memberships", "ben"}});
  EXPECT_EQ(ColumnOf("default", "FriendlyName"), "All");
  EXPECT_EQ(ListsOf("ben"), "|");
}

TEST_F(AdminChanges, IgnoreMissingRecordsAndThoseOfAnotherKind) {
  const std::string gone = "4711";
  for (const std::string& id : {IdOf("sales"), gone, std::string("x'")}) SaveUser(id, "eve");
  for (const std::string& id : {IdOf("anna"), gone}) {
    Act("gm_save", {{"id", id}, {"name", "Eve"}, {"intname", "eve"}, {"memberships", "anna"}});
    Act("gm_delete", {{"id", id}});
  }
  Act("um_delete", {{"id", IdOf("sales")}});
  Act("um_delete", {});
  EXPECT_EQ(IdOf("eve"), "(none)");
  EXPECT_EQ(ColumnOf("sales", "FriendlyName"), "Sales");
  EXPECT_EQ(ColumnOf("anna", "FriendlyName"), "Anna A");
  EXPECT_EQ(ListsOf("anna"), "sales, staff|sales");
  EXPECT_EQ(Read(Statement("SELECT Count(CalendarID) AS N FROM Calendars")), "6");
}

TEST_F(AdminChanges, TheAdministratorsAccountCanBeRecreated) {
  Act("um_delete", {{"id", IdOf("admin")}});
  EXPECT_EQ(IdOf("admin"), "(none)");
  Act("um_save", {{"name", "New"}, {"intname", "admin"}, {"password", "demo2"}});
  LogIn("admin", "demo2");
  EXPECT_NE(Get("p=a").Body.find("Logout admin"), std::string::npos);
}

TEST_F(AdminChanges, AreAtomic) {
  AddThingsOfAnna();
  AddEvent("sales", "Fair", "BeginDate", "DateValue('3/15/2004')");
  const std::string anna = IdOf("anna");
  const std::string sales = IdOf("sales");
  const Rows owners = Owners();
  const Rows messages = Messages();
  Run(Statement("ALTER TABLE GroupViews DROP COLUMN Calendars"));
  EXPECT_THROW(SaveUser(anna, "zoe"), DatabaseError);
  EXPECT_THROW(Act("um_delete", {{"id", anna}}), DatabaseError);
  EXPECT_THROW(Act("gm_save", {{"id", sales}, {"name", "Trade"}, {"intname", "trade"}}), DatabaseError);
  EXPECT_EQ(ColumnOf("anna", "FriendlyName"), "Anna A");
  EXPECT_EQ(ColumnOf("sales", "FriendlyName"), "Sales");
  EXPECT_EQ(Owners(), owners);
  EXPECT_EQ(Read(Statement("SELECT Owner FROM GroupViews WHERE Name = 'own'")), "anna");
  EXPECT_EQ(Messages(), messages);
}

}  // namespace
}  // namespace orlune::testing
