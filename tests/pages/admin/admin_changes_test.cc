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
  std::string ViewLists(std::string_view view) {
    std::string lists;
    for (const SqlLiteral column :
         {SqlLiteral("Calendars"), SqlLiteral("BackGround"), SqlLiteral("ForeGround")})
      lists += Read(Statement("SELECT {} FROM GroupViews WHERE Name = '{}'", column, view)) + "|";
    return lists;
  }
  int Count(const Statement& from) {
    return std::stoi(Read(Statement("SELECT Count(Owner) AS N FROM {}", from)));
  }
  void AddView(std::string_view name, std::string_view owner, std::string_view calendars,
               std::string_view background, std::string_view foreground) {
    Run(
        Statement("INSERT INTO GroupViews (Name, Owner, Calendars, BackGround, ForeGround) "
                  "VALUES ('{}', '{}', '{}', '{}', '{}')",
                  name, owner, calendars, background, foreground));
  }
  void AddMessage(std::string_view sender, std::string_view recipient) {
    Run(Statement("INSERT INTO Messages (Sender, Recipient, Viewed) VALUES ('{}', '{}', no)", sender,
                  recipient));
  }
  void SaveUser(std::string_view id, std::string_view loginName) {
    Act("um_save", {{"id", std::string(id)},
                    {"name", "Ann O'Dea"},
                    {"intname", std::string(loginName)},
                    {"password", "*12"},
                    {"hide", "maybe"},
                    {"memberships", "sales, , sales, nowhere"}});
  }
  /// Sends the form and expects to be led back to the list.
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
  AddView("own", "anna", "ben", "", "");
  AddView("first", "ben", "anna, annabel, joanna", "#1, #2, #3", "#4, #5, #6");
  AddView("last", "ben", "ben, ANNA", ", red, blue", "green");
  AddView("alone", "admin", "anna", "", "");
  AddView("near", "admin", "annabel, joanna", "#1", "#2");
  AddMessage("anna", "ben");
  AddMessage("ben", "anna");
}

TEST_F(AdminChanges, NewUsersGetTheirPreferences) {
  SaveUser("", "Annie");
  EXPECT_EQ(ColumnOf("annie", "FriendlyName"), "Ann O&#39;Dea");
  EXPECT_EQ(ColumnOf("annie", "Name"), "Annie");
  EXPECT_EQ(ColumnOf("annie", "Password"), "*12");
  EXPECT_EQ(ColumnOf("annie", "IsHidden"), "no");
  EXPECT_EQ(ColumnOf("annie", "IsGroup"), "no");
  EXPECT_EQ(ListsOf("annie"), "sales, , sales, nowhere|Null");
  EXPECT_EQ(ColumnOf("annie", "ClockMode"), "24");
  EXPECT_EQ(ColumnOf("annie", "FirstDayOfWeek"), "2");
  EXPECT_EQ(ColumnOf("annie", "Weekend"), "1, 7");
  LogIn("annie", "*12");
  EXPECT_NE(Get("p=c").Body.find("Logout Annie"), std::string::npos);
}

TEST_F(AdminChanges, RenamedUsersKeepWhatIsTheirs) {
  AddThingsOfAnna();
  const std::string id = IdOf("anna");
  SaveUser(id, "zoe");
  EXPECT_EQ(IdOf("zoe"), id);
  EXPECT_EQ(ColumnOf("zoe", "ClockMode"), "24");
  EXPECT_EQ(Count(Statement("Events WHERE Owner = 'zoe'")), 2);
  EXPECT_EQ(Count(Statement("Events WHERE Owner = 'annabel'")), 1);
  EXPECT_EQ(Read(Statement("SELECT Owner FROM GroupViews WHERE Name = 'own'")), "zoe");
  EXPECT_EQ(ViewLists("first"), "zoe, annabel, joanna|#1, #2, #3|#4, #5, #6|");
  EXPECT_EQ(ViewLists("last"), "ben, zoe|, red, blue|green|");
  EXPECT_EQ(ViewLists("near"), "annabel, joanna|#1|#2|");
  EXPECT_EQ(Read(Statement("SELECT Sender FROM Messages WHERE Recipient = 'ben'")), "zoe");
  EXPECT_EQ(Read(Statement("SELECT Sender FROM Messages WHERE Recipient = 'zoe'")), "ben");
  SaveUser(id, "Zoe");
  EXPECT_EQ(Read(Statement("SELECT Owner FROM Events WHERE Owner = 'zoe'")), "Zoe");
  EXPECT_EQ(ViewLists("alone"), "Zoe|||");
}

TEST_F(AdminChanges, DeletedUsersLeaveNothingButWhatTheySent) {
  AddThingsOfAnna();
  Act("um_delete", {{"id", IdOf("anna")}});
  EXPECT_EQ(IdOf("anna"), "(none)");
  EXPECT_EQ(Count(Statement("Events WHERE Owner = 'anna'")), 0);
  EXPECT_EQ(Count(Statement("Events")), 1);
  EXPECT_EQ(Read(Statement("SELECT Name FROM GroupViews WHERE Owner = 'anna'")), "(none)");
  EXPECT_EQ(ViewLists("first"), "annabel, joanna|#2, #3|#5, #6|");
  EXPECT_EQ(ViewLists("last"), "ben|, blue|green|");
  EXPECT_EQ(ViewLists("alone"), "Null|Null|Null|");
  EXPECT_EQ(ViewLists("near"), "annabel, joanna|#1|#2|");
  EXPECT_EQ(Read(Statement("SELECT Sender FROM Messages")), "anna");
  EXPECT_EQ(Read(Statement("SELECT Count(MessageID) AS N FROM Messages")), "1");
}

TEST_F(AdminChanges, GroupsAreNamedByThemselves) {
  const auto create = [&](const std::string& name) { Act("gm_save", {{"name", name}, {"intname", "odd"}}); };
  for (const char* name : {"Board Room", "Board Room", "2004", "!!!", "O'Hara"}) create(name);
  for (const auto& [name, friendlyName] : {std::pair{"boardroom", "Board Room"},
                                           {"boardroom1", "Board Room"},
                                           {"2004a", "2004"},
                                           {"name", "!!!"},
                                           {"ohara", "O&#39;Hara"}}) {
    EXPECT_EQ(ColumnOf(name, "FriendlyName"), friendlyName);
    EXPECT_EQ(ColumnOf(name, "IsGroup"), "yes");
    EXPECT_EQ(ColumnOf(name, "IsHidden"), "yes");
    EXPECT_EQ(ColumnOf(name, "Weekend"), "1, 7");
  }
}

TEST_F(AdminChanges, GroupsBringTheListsOfUsersIntoLine) {
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
  AddView("team", "ben", "sales, presales", "", "");
  form["intname"] = "Trade";
  form["memberships"] = "";
  Act("gm_save", form);
  EXPECT_EQ(ColumnOf("trade", "Name"), "Trade");
  EXPECT_EQ(ListsOf("anna"), "salesmen, staff|Trade");
  EXPECT_EQ(ListsOf("ben"), "Null|presales, Trade");
  EXPECT_EQ(Count(Statement("Events WHERE Owner = 'Trade'")), 1);
  EXPECT_EQ(ViewLists("team"), "Trade, presales|||");

  Act("gm_delete", {{"id", form["id"]}});
  EXPECT_EQ(IdOf("trade"), "(none)");
  EXPECT_EQ(ListsOf("anna"), "salesmen, staff|Null");
  EXPECT_EQ(ListsOf("ben"), "Null|presales");
  EXPECT_EQ(Count(Statement("Events")), 0);
  EXPECT_EQ(ViewLists("team"), "Trade, presales|||");
}

TEST_F(AdminChanges, TypesAndSchemesAreWrittenAndDeleted) {
  Act("tm_save", {{"name", "O'Trip"}, {"intname", "*1"}});
  EXPECT_EQ(Read(Statement("SELECT TypeName FROM EventTypes WHERE FileName = '*1'")), "O&#39;Trip");
  Act("tm_save", {{"id", "1"}, {"name", "Trip"}, {"intname", "trip.gif"}});
  EXPECT_EQ(Read(Statement("SELECT FileName FROM EventTypes WHERE TypeName = 'Trip'")), "trip.gif");
  Act("tm_delete", {{"id", "1"}});
  EXPECT_EQ(Read(Statement("SELECT TypeID FROM EventTypes")), "(none)");
  Act("cm_save", {{"name", "Darker"}, {"intname", "dark.css"}});
  EXPECT_EQ(Read(Statement("SELECT SheetName FROM StyleSheets WHERE SheetID = 2")), "Darker");
  Act("cm_delete", {{"id", "2"}});
  EXPECT_EQ(Read(Statement("SELECT SheetID FROM StyleSheets WHERE SheetID = 2")), "(none)");
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

TEST_F(AdminChanges, RecordsOfAnotherKindOrGoneAreLeftAlone) {
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

TEST_F(AdminChanges, TheAdministratorsAccountCanBeMadeAnew) {
  Act("um_delete", {{"id", IdOf("admin")}});
  EXPECT_EQ(IdOf("admin"), "(none)");
  Act("um_save", {{"name", "New"}, {"intname", "admin"}, {"password", "demo2"}});
  LogIn("admin", "demo2");
  EXPECT_NE(Get("p=a").Body.find("Logout admin"), std::string::npos);
}

TEST_F(AdminChanges, HappenWhollyOrNotAtAll) {
  AddThingsOfAnna();
  AddEvent("sales", "Fair", "BeginDate", "DateValue('3/15/2004')");
  const std::string anna = IdOf("anna");
  const std::string sales = IdOf("sales");
  Run(Statement("ALTER TABLE GroupViews DROP COLUMN Calendars"));
  EXPECT_THROW(SaveUser(anna, "zoe"), DatabaseError);
  EXPECT_THROW(Act("um_delete", {{"id", anna}}), DatabaseError);
  EXPECT_THROW(Act("gm_save", {{"id", sales}, {"name", "Trade"}, {"intname", "trade"}}), DatabaseError);
  EXPECT_EQ(ColumnOf("anna", "FriendlyName"), "Anna A");
  EXPECT_EQ(ColumnOf("sales", "FriendlyName"), "Sales");
  EXPECT_EQ(Count(Statement("Events WHERE Owner = 'anna'")), 2);
  EXPECT_EQ(Count(Statement("Events WHERE Owner = 'sales'")), 1);
  EXPECT_EQ(Read(Statement("SELECT Owner FROM GroupViews WHERE Name = 'own'")), "anna");
  EXPECT_EQ(Read(Statement("SELECT Sender FROM Messages WHERE Recipient = 'anna'")), "ben");
}

}  // namespace
}  // namespace orlune::testing
