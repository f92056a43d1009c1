#include "commands/check.h"

#include <sstream>

#include "commands/commands_fixture.h"
#include "demo/demo_company.h"
#include "drivers/spliced.h"

namespace orlune::testing {
namespace {

using Texts = std::vector<std::string>;

class CheckTest : public CommandsFixture {
 protected:
  bool Check(const DatabasePlace& place) {
    output_.str("");
    return CheckDatabase(Named(place), output_);
  }
  /// Expects one kind of finding, and `text` in the output.
  void ExpectOne(const DatabasePlace& place, const std::string& text, bool isSound = false) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Check(place), isSound);
    EXPECT_NE(output_.str().find(text), std::string::npos) << output_.str();
    EXPECT_EQ(output_.str().find("); "), output_.str().rfind("); ")) << "more than one: " << output_.str();
  }

  std::ostringstream output_;
};

TEST_F(CheckTest, FindsNothingInTheDemo) {
  DatabasePlace place;
  MakeCurrent(place);
  const auto database = place.MakeDriver(regional_)->Open(place.Path());
  database->Begin();
  for (int i = 0; i < 3; ++i)
    database->Execute(Statement("INSERT INTO StyleSheets (SheetName) VALUES ('x')"));
  database->Commit();
  AddDemoCompany(*database, regional_, std::chrono::year{2004} / 3 / 15, "demo1");
  EXPECT_TRUE(Check(place));
  EXPECT_EQ(output_.str(), place.Path() + " is sound\n");
}

TEST_F(CheckTest, FindsEachFaultAndItsPlace) {
  struct Case {
    Texts Breaks;
    std::string Found;
    bool IsSound = false;
  };
  const std::string event = "INSERT INTO Events (Owner, Type, BeginDate) VALUES ('ben', 'none', '3/5/2004')";
  const std::string view =
      "INSERT INTO GroupViews (Name, Owner, Calendars, BackGround, ForeGround) VALUES ('v', 'ben', ";
  const std::string rule = "UPDATE Events SET EndDate = '3/9/2004', ";
  const Case cases[] = {
      {{"DELETE FROM Calendars WHERE Name = 'admin'"}, "No user 'admin' (1)"},
      {{"UPDATE Calendars SET IsGroup = yes WHERE Name = 'admin'"}, "No user 'admin' (1)"},
      {{"UPDATE Calendars SET Name = 'x' WHERE Name = 'default'", "UPDATE Calendars SET MemberOfGroups = ''"},
       "No group 'default' (1)"},
      {{"INSERT INTO Calendars (Name) VALUES ('BEN')"}, "Duplicate calendar names (1)"},
      {{"INSERT INTO Calendars (Name) VALUES ('Straße')", "INSERT INTO Calendars (Name) VALUES ('STRASSE')"},
       "Duplicate calendar names (1)"},
      {{"INSERT INTO Calendars (Password) VALUES ('x')"}, "Calendars without a name (1)"},
      {{"UPDATE Calendars SET MemberOfGroups = 'team, gone'"}, "\"Ben\": \"gone\" in MemberOfGroups\n"},
      {{"UPDATE Calendars SET AdminOfGroups = 'ben' WHERE Name = 'Ben'"}, "Users in lists of groups (1)"},
      {{"UPDATE Calendars SET StyleSheet = 9 WHERE Name = 'Ben'"}, "calendar \"Ben\": 9\n"},
      {{event, "UPDATE Events SET Owner = 'gone'"}, "event 1 of \"gone\"\n"},
      {{event, "UPDATE Events SET BeginDate = Null"}, "Events without a begin date"},
      {{event, "UPDATE Events SET Type = Null"}, "event 1: Type\n"},
      {{event, "UPDATE Events SET Type = 'day'"}, "event 1: EndDate\n"},
      {{event, rule + "Type = 'weekday', RepeatWeekday = '2, 8', RepeatFrequency = 'vko_1'"},
       "event 1: RepeatWeekday\n"},
      {{event, rule + "Type = 'weekday', RepeatWeekday = '2, 7', RepeatFrequency = 'vko_4'"},
       "event 1: RepeatFrequency\n"},
      {{event, rule + "Type = 'month', RepeatDay = '31, 32'"}, "event 1: RepeatDay\n"},
      {{event, rule + "Type = 'year', RepeatWeekends = 'vkl_xx'"}, "event 1: RepeatWeekends\n"},
      {{event, "UPDATE Events SET SuggID = '77'"}, "note: Suggestions of a deleted event (1)", true},
      {{"INSERT INTO Messages (Recipient, SentDate) VALUES ('gone', '3/5/2004')"},
       "message 1 for \"gone\"\n"},
      {{view + "'', '', '')", "UPDATE GroupViews SET Owner = 'gone'"}, "group view \"v\" of \"gone\"\n"},
      {{view + "'', '', '')", view + "'', '', '')", "UPDATE GroupViews SET Name = 'V' WHERE GroupID = 2"},
       "duplicate names of group views (1)"},
      {{view + "'ben, admin', 'red', 'red, red')"}, "Group views without one colour for each calendar"},
      {{view + "'ben, gone', 'a, b', 'a, b')"}, "group view \"v\": \"gone\"\n", true},
      {{"ALTER TABLE Messages DROP COLUMN Subject"}, "  Messages.Subject\n"},
  };
  for (const Case& c : cases) {
    DatabasePlace place;
    MakeCurrent(place);
    for (const std::string& statement : c.Breaks) Run(place, Spliced(statement, {}));
    ExpectOne(place, c.Found, c.IsSound);
  }
}

TEST_F(CheckTest, FindsWhatSharedCalendarsHaveLost) {
  const std::string event =
      "INSERT INTO Events (Owner, Type, BeginDate, EndDate) VALUES ('ben', 'listed', '3/5/2004', '3/9/2004')";
  const std::string day = "INSERT INTO EventDays (EventID, EventDay, Role) VALUES ";
  const std::string object = "INSERT INTO CalendarObjects (ResourceName) VALUES ('a.ics')";
  const std::pair<Texts, std::string> cases[] = {
      {{event, day + "(1, '3/5/2004', 'left out')"}, "Events without their listed days"},
      {{event, day + "(1, '3/5/2004', 'listed')", day + "(2, '3/5/2004', 'listed')"},
       "EventDays 2: event 2\n"},
      {{event, day + "(1, '3/5/2004', 'listed')", day + "(1, '3/6/2004', 'other')"},
       "EventDays 2: \"other\"\n"},
      {{object}, "  object 1\n"},
      {{event, day + "(1, '3/5/2004', 'listed')",
        "INSERT INTO ObjectEvents (ObjectID, EventID) VALUES (4, 1)"},
       "ObjectEvents 1: object 4\n"},
      {{"INSERT INTO AppPasswords (Login) VALUES ('team')"}, "AppPasswords 1 of \"team\"\n"},
  };
  for (const auto& [breaks, found] : cases) {
    DatabasePlace place;
    MakeShared(place);
    for (const std::string& statement : breaks) Run(place, Spliced(statement, {}));
    ExpectOne(place, found);
  }
  DatabasePlace place;
  MakeShared(place);
  Run(place, Statement("INSERT INTO SecretLinks (Login, Calendar) VALUES ('ben', '@view')"));
  Run(place, Statement("INSERT INTO SecretLinks (Login, Calendar) VALUES ('ben', 'gone')"));
  ExpectOne(place, "SecretLinks 2: \"gone\"\n", true);
  place.RunNative(place.Kind() == Engine::kSqlite ? "DROP TRIGGER OrluneEventsUPDATE"
                                                  : "DROP TRIGGER \"OrluneEventsUPDATE\" ON \"Events\"");
  EXPECT_FALSE(Check(place));
  EXPECT_NE(output_.str().find("  OrluneEventsUPDATE\n"), std::string::npos) << output_.str();
}

TEST_F(CheckTest, PrintsTheFirstPlacesOfMany) {
  DatabasePlace place;
  Make(place);
  EXPECT_FALSE(Check(place));
  EXPECT_NE(output_.str().find("Missing tables and columns of this version (7); the first page"),
            std::string::npos);
  UpgradeSchema(*place.MakeDriver(regional_)->Open(place.Path()));
  for (int i = 0; i < 23; ++i)
    Run(place, Statement("INSERT INTO Events (Owner, Type, BeginDate) VALUES ('x', 'none', '3/5/2004')"));
  ExpectOne(place, "  event 20 of \"x\"\n  and 3 more\n");
}

TEST_F(CheckTest, FindsAnIncompleteCopy) {
  DatabasePlace place;
  MakeCurrent(place);
  OpenToFill(place)->MarkUnfinishedCopy("/old/calendar.db");
  ExpectOne(place, "  its source is /old/calendar.db\n");
}

TEST_F(CheckTest, FindsDamageByOtherPrograms) {
  const std::string event = "INSERT INTO Events (Owner, Type, BeginDate, EndTime) VALUES ('ben', 'none', ";
  const std::pair<Texts, std::string> cases[] = {
      {{"DROP INDEX EventsOwnerBegin"}, "  EventsOwnerBegin\n"},
      {{"UPDATE sqlite_sequence SET seq = 2 WHERE name = 'Calendars'"}, "counter at 2\n"},
      {{event + "'2004-02-30', NULL)"}, "Events 1: BeginDate is \"2004-02-30\", not a date\n"},
      {{event + "'2004-02-28', '9:00')"}, "Events 1: EndTime is \"9:00\", not a time of day\n"},
      {{"UPDATE Calendars SET DayEnd = 'late' WHERE Name = 'Ben'"},
       "DayEnd is \"late\", not a whole number\n"},
      {{"UPDATE Calendars SET Name = 'x' || char(27) || '[2J', MemberOfGroups = 'gone' WHERE Name = 'Ben'"},
       "calendar \"x [2J\""},
      {{"UPDATE Calendars SET FriendlyName = CAST(x'FF' AS TEXT) WHERE Name = 'Ben'"},
       "Calendars 4: FriendlyName\n"},
      {{"DROP TABLE StyleSheets", "CREATE TABLE StyleSheets (SheetID LONG, SheetName TEXT, SheetFile TEXT)"},
       "StyleSheets.SheetID: expected a whole number, counted\n"},
      {{"DROP TABLE Messages"}, "  table Messages\n"},
      {{"INSERT INTO Calendars (Name) VALUES ('\xC3\x84nne'), ('\xC3\xA4nna')", "REINDEX"},
       "Damaged database"},
  };
  for (const auto& [breaks, found] : cases) {
    DatabasePlace place(Engine::kSqlite);
    MakeCurrent(place);
    for (const std::string& sql : breaks) place.RunNative(sql);
    const auto folder = std::filesystem::path(place.Path()).parent_path();
    const auto written = std::filesystem::last_write_time(place.Path());
    EXPECT_FALSE(Check(place));
    EXPECT_NE(output_.str().find(found), std::string::npos) << output_.str();
    EXPECT_EQ(std::filesystem::last_write_time(place.Path()), written) << "checking changes nothing";
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);
  }
}

}  // namespace
}  // namespace orlune::testing
