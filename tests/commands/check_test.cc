#include "commands/check.h"

#include <sstream>

#include "commands/commands_fixture.h"
#include "demo/demo_company.h"

namespace orlune::testing {
namespace {

class CheckTest : public CommandsFixture {
 protected:
  bool Check(const DatabasePlace& place) {
    output_.str("");
    return CheckDatabase(Named(place), output_);
  }
  bool Tells(const std::string& text) const { return output_.str().find(text) != std::string::npos; }

  std::ostringstream output_;
};

TEST_F(CheckTest, FindsNothingInASoundDatabase) {
  DatabasePlace place;
  MakeCurrent(place);
  const auto driver = place.MakeDriver(regional_);
  const auto database = driver->Open(place.Path());
  database->Begin();
  for (int i = 0; i < 3; ++i)
    database->Execute(Statement("INSERT INTO StyleSheets (SheetName) VALUES ('x')"));
  AddDemoCompany(*database, regional_, std::chrono::year{2004} / 3 / 15, "demo1");
  database->Commit();
  EXPECT_TRUE(Check(place));
  EXPECT_EQ(output_.str(), place.Path() + " is sound\n");
}

struct Case {
  const char* Name;
  std::vector<Statement> Breaks;
  std::string Told;      ///< the beginning of what is found, and where
  bool IsSound = false;  ///< whether it is a note only
};

Statement Event(SqlLiteral columns, SqlLiteral values) {
  return Statement("INSERT INTO Events ({}) VALUES ({})", columns, values);
}

Statement View(std::string_view calendars, std::string_view background, std::string_view foreground) {
  return Statement(
      "INSERT INTO GroupViews (Name, Owner, Calendars, BackGround, ForeGround) "
      "VALUES ('v', 'ben', '{}', '{}', '{}')",
      calendars, background, foreground);
}

TEST_F(CheckTest, TellsEachFaultAndWhere) {
  const Case cases[] = {
      {"no admin", {Statement("DELETE FROM Calendars WHERE Name = 'admin'")}, "There is no user 'admin' (1)"},
      {"admin is a group",
       {Statement("UPDATE Calendars SET IsGroup = yes WHERE Name = 'admin'")},
       "There is no user 'admin' (1)"},
      {"no default",
       {Statement("UPDATE Calendars SET Name = 'everybody', MemberOfGroups = '' WHERE Name = 'default'"),
        Statement("UPDATE Calendars SET MemberOfGroups = ''")},
       "There is no group 'default' (1)"},
      {"name twice",
       {Statement("INSERT INTO Calendars (Name) VALUES ('BEN')")},
       "Names of calendars are there twice, whatever their case (1)"},
      {"no name", {Statement("INSERT INTO Calendars (Password) VALUES ('x')")}, "Calendars have no name (1)"},
      {"unknown group",
       {Statement("UPDATE Calendars SET MemberOfGroups = 'team, gone' WHERE Name = 'Ben'")},
       "calendar \"Ben\": \"gone\" in MemberOfGroups\n"},
      {"user as a group",
       {Statement("UPDATE Calendars SET AdminOfGroups = 'ben' WHERE Name = 'Ben'")},
       "Lists of groups name users (1)"},
      {"colour scheme",
       {Statement("UPDATE Calendars SET StyleSheet = 9 WHERE Name = 'Ben'")},
       "calendar \"Ben\": 9\n"},
      {"event of nobody",
       {Event("Owner, Type, BeginDate", "'gone', 'none', '3/5/2004'")},
       "event 1 of \"gone\"\n"},
      {"no begin", {Event("Owner, Type", "'ben', 'none'")}, "Events have no date to begin on"},
      {"no type", {Event("Owner, BeginDate", "'ben', '3/5/2004'")}, "event 1: Type\n"},
      {"no end", {Event("Owner, Type, BeginDate", "'ben', 'day', '3/5/2004'")}, "event 1: EndDate\n"},
      {"weekdays",
       {Event("Owner, Type, BeginDate, EndDate, RepeatWeekday, RepeatFrequency",
              "'ben', 'weekday', '3/5/2004', '3/9/2004', '2, 8', 'vko_1'")},
       "event 1: RepeatWeekday\n"},
      {"frequency",
       {Event("Owner, Type, BeginDate, EndDate, RepeatWeekday, RepeatFrequency",
              "'ben', 'weekday', '3/5/2004', '3/9/2004', '2, 7', 'vko_4'")},
       "event 1: RepeatFrequency\n"},
      {"days of the month",
       {Event("Owner, Type, BeginDate, EndDate, RepeatDay",
              "'ben', 'month', '3/5/2004', '3/9/2004', '31, 32'")},
       "event 1: RepeatDay\n"},
      {"weekends",
       {Event("Owner, Type, BeginDate, EndDate, RepeatWeekends",
              "'ben', 'year', '3/5/2004', '3/9/2004', 'vkl_xx'")},
       "event 1: RepeatWeekends\n"},
      {"suggestion",
       {Event("Owner, Type, BeginDate, SuggID", "'ben', 'none', '3/5/2004', '77'")},
       "note: Suggestions refer to an event of the sender that is deleted (1)",
       true},
      {"recipient",
       {Statement("INSERT INTO Messages (Recipient, SentDate) VALUES ('gone', '3/5/2004')")},
       "message 1 for \"gone\"\n"},
      {"view of nobody",
       {View("ben", "", ""), Statement("UPDATE GroupViews SET Owner = 'gone'")},
       "group view \"v\" of \"gone\"\n"},
      {"view twice",
       {View("ben", "", ""), View("ben", "", ""),
        Statement("UPDATE GroupViews SET Name = 'V' WHERE GroupID = 2")},
       "Names of group views are missing or there twice, whatever their case (1)"},
      {"colours",
       {View("ben, admin", "red", "red, red")},
       "Group views have not one colour for each calendar"},
      {"member that is gone", {View("ben, gone", "a, b", "a, b")}, "group view \"v\": \"gone\"\n", true},
      {"column", {Statement("ALTER TABLE Messages DROP COLUMN Subject")}, "  Messages.Subject\n"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.Name);
    DatabasePlace place;
    MakeCurrent(place);
    for (const Statement& statement : c.Breaks) Run(place, statement);
    EXPECT_EQ(Check(place), c.IsSound);
    EXPECT_TRUE(Tells(c.Told)) << output_.str();
    EXPECT_EQ(output_.str().find('('), output_.str().rfind("(1); ")) << "more than one: " << output_.str();
  }
}

TEST_F(CheckTest, TellsWhatTheNextPageMends) {
  DatabasePlace place;
  Make(place);
  EXPECT_FALSE(Check(place));
  EXPECT_TRUE(Tells("Tables and columns of this version are missing (7); the first page")) << output_.str();
  UpgradeSchema(*place.MakeDriver(regional_)->Open(place.Path()));
  EXPECT_TRUE(Check(place)) << output_.str();
}

TEST_F(CheckTest, ShowsTheFirstOfMany) {
  DatabasePlace place;
  MakeCurrent(place);
  for (int i = 0; i < 23; ++i) Run(place, Event("Owner, Type, BeginDate", "'gone', 'none', '3/5/2004'"));
  EXPECT_FALSE(Check(place));
  EXPECT_TRUE(Tells("Events belong to nobody (23); ")) << output_.str();
  EXPECT_TRUE(Tells("  event 20 of \"gone\"\n  and 3 more\n")) << output_.str();
}

TEST_F(CheckTest, TellsAnUnfinishedCopy) {
  DatabasePlace place;
  MakeCurrent(place);
  OpenToFill(place)->MarkUnfinishedCopy("/old/calendar.db");
  EXPECT_FALSE(Check(place));
  EXPECT_TRUE(Tells("is a copy that is not complete (1)") && Tells("  it is one of /old/calendar.db\n"))
      << output_.str();
}

TEST_F(CheckTest, TellsWhatOtherProgramsDidToAFile) {
  const struct {
    const char* Name;
    std::vector<std::string> Sql;
    const char* Told;
  } cases[] = {
      {"index", {"DROP INDEX EventsOwnerBegin"}, "  EventsOwnerBegin\n"},
      {"counter",
       {"UPDATE sqlite_sequence SET seq = 2 WHERE name = 'Calendars'"},
       "and its counter is at 2\n"},
      {"date",
       {"INSERT INTO Events (Owner, Type, BeginDate) VALUES ('ben', 'none', '2004-02-30')"},
       "Events 1: BeginDate is \"2004-02-30\", not a date\n"},
      {"time",
       {"INSERT INTO Events (Owner, Type, BeginDate, EndTime) VALUES ('ben', 'none', '2004-02-28', '9:00')"},
       "Events 1: EndTime is \"9:00\", not a time of day\n"},
      {"number",
       {"UPDATE Calendars SET DayEnd = 'late' WHERE Name = 'Ben'"},
       "Calendars 4: DayEnd is \"late\", not a whole number\n"},
      {"control characters stay out of the terminal",
       {"UPDATE Calendars SET Name = 'x' || char(27) || '[2J', MemberOfGroups = 'gone' WHERE Name = 'Ben'"},
       "calendar \"x [2J\""},
      {"no UTF-8",
       {"UPDATE Calendars SET FriendlyName = CAST(x'FF' AS TEXT) WHERE Name = 'Ben'"},
       "Calendars 4: FriendlyName\n"},
      {"type",
       {"DROP TABLE StyleSheets", "CREATE TABLE StyleSheets (SheetID LONG, SheetName TEXT, SheetFile TEXT)"},
       "StyleSheets.SheetID should hold a whole number that is counted\n"},
      {"table gone", {"DROP TABLE Messages"}, "  the table Messages\n"},
      {"order of an index",
       {"INSERT INTO Calendars (Name) VALUES ('\xC3\x84nne'), ('\xC3\xA4nna')", "REINDEX"},
       "The database is damaged"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Name);
    DatabasePlace place(Engine::kSqlite);
    MakeCurrent(place);
    for (const std::string& sql : c.Sql) place.RunNative(sql);
    EXPECT_FALSE(Check(place));
    EXPECT_TRUE(Tells(c.Told)) << output_.str();
  }
}

TEST_F(CheckTest, ChangesNothingInAFile) {
  DatabasePlace place(Engine::kSqlite);
  Make(place);
  place.RunNative("DROP INDEX EventsOwnerBegin");
  const auto folder = std::filesystem::path(place.Path()).parent_path();
  const auto written = std::filesystem::last_write_time(place.Path());
  EXPECT_FALSE(Check(place));
  EXPECT_EQ(std::filesystem::last_write_time(place.Path()), written);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);
  EXPECT_TRUE(Tells("EventsOwnerBegin"));
}

}  // namespace
}  // namespace orlune::testing
