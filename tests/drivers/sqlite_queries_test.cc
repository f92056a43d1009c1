#include "drivers/dialect/parser.h"
#include "drivers/dialect/translation.h"
#include "drivers/spliced.h"
#include "drivers/sqlite/catalogue_reader.h"
#include "drivers/sqlite/sqlite_sql.h"
#include "drivers/sqlite/unicode_text.h"
#include "drivers/sqlite_fixture.h"

namespace orlune {
namespace {

using testing::Spliced;
using Texts = std::vector<std::string>;

class SqliteQueries : public testing::SqliteFixture {
 protected:
  Texts Names(const StatementText& query) { return Column(*connection_, query, "Name"); }

  /// How SQLite would run a query, a line for each step.
  std::string Plan(const StatementText& query) const {
    const auto raw = sqlite::OpenExisting(file_, {});
    const auto translation = dialect::Translate(dialect::Parse(query), sqlite::ReadCatalogue(raw.get()),
                                                sqlite::SqliteSql(), regional_);
    const auto step = sqlite::Prepare(raw.get(), "EXPLAIN QUERY PLAN " + translation.Sql);
    std::string plan = translation.Sql;
    while (sqlite::Step(step.get())) plan.append("\n").append(sqlite::ColumnText(step.get(), 3));
    return plan;
  }

  std::unique_ptr<Connection> connection_ = Open();
};

TEST_F(SqliteQueries, ReadTextsOfNoDateAsNull) {
  const auto raw = OpenRaw();
  sqlite::Run(raw.get(), "INSERT INTO Events (BeginDate, BeginTime) VALUES ('soon', '25:00:00')");
  connection_ = Open();
  const auto rows = connection_->Query(Statement("SELECT BeginDate, BeginTime FROM Events"));
  ASSERT_TRUE(rows->Next());
  EXPECT_EQ(rows->Get(0), Value());
  EXPECT_EQ(rows->Get(1), Value());
}

TEST(LikePattern, TakesWhatFoldsToSeveralLettersAsOne) {
  EXPECT_TRUE(sqlite::LikePattern("stra_e").Matches("Straße"));
  EXPECT_FALSE(sqlite::LikePattern("stra__e").Matches("Straße"));
  EXPECT_TRUE(sqlite::LikePattern("_z").Matches("\xFFz"));
}

TEST(CompareIgnoringCase, OrdersByFoldedCodePoints) {
  const Texts ascending{"", "a", "AA", "ab", "B", "ß", "ST", "z", "Ä", "Å", "ı", "σ", "日"};
  for (std::size_t i = 0; i < ascending.size(); ++i) {
    for (std::size_t j = 0; j < ascending.size(); ++j) {
      const int compared = sqlite::CompareIgnoringCase(ascending[i], ascending[j]);
      EXPECT_EQ(std::make_pair(compared<0, compared> 0), std::make_pair(i<j, i> j)) << i << ' ' << j;
    }
  }
}

TEST_F(SqliteQueries, OfAPageReadThroughIndexes) {
  connection_->Execute(Statement(
      "CREATE TABLE GroupViews (GroupID COUNTER CONSTRAINT GroupID PRIMARY KEY, FriendlyName TEXT (50), "
      "Name TEXT (50), Owner TEXT (50))"));
  connection_->Execute(Statement("ALTER TABLE Calendars ADD COLUMN IsHidden YESNO"));
  connection_ = Open();
  struct Case {
    Spliced Query;
    Texts Searches;
  };
  const std::vector<Case> cases{
      {{"SELECT * FROM Events WHERE (Owner In ('{}', 'default')) AND ((Type = 'none' AND BeginDate >= "
        "DateValue('{}') "
        "AND BeginDate <= DateValue('{}')) OR (Type <> 'none' AND BeginDate <= DateValue('{}') AND EndDate "
        ">= "
        "DateValue('{}'))) ORDER BY BeginTime",
        {"ann", "3/1/2004", "3/31/2004", "3/31/2004", "3/1/2004"}},
       {"EventsOwnerBegin (Owner=? AND BeginDate>? AND BeginDate<?)",
        "EventsRepeating (Owner=? AND EndDate>?)"}},
      {{"SELECT Password FROM Calendars WHERE (Name = '{}') AND (IsGroup = no)", {"ann"}},
       {"CalendarsName (Name=?)"}},
      {{"SELECT DISTINCT MemberOfGroups FROM Calendars WHERE Name IN ('{}', '{}')", {"a", "b"}},
       {"CalendarsName (Name=?)"}},
      {{"SELECT Count(MessageID) AS N FROM Messages WHERE Recipient = '{}' AND Viewed = No", {"ann"}},
       {"COVERING INDEX MessagesUnread (Recipient=? AND Viewed=?)"}},
      {{"SELECT Sender FROM Messages WHERE Recipient = '{}' ORDER BY SentDate", {"ann"}},
       {"MessagesSent (Recipient=?)"}},
      {{"SELECT SuggestState FROM Events INNER JOIN Calendars ON Owner = Calendars.Name WHERE (SuggID = "
        "'{}')",
        {"7"}},
       {"EventsSuggID (SuggID=?)", "CalendarsName (Name=?)"}},
      {{"SELECT TOP 1 EventID FROM Events WHERE SuggestState = '-' ORDER BY EventID DESC", {}},
       {"EventsSuggestState (SuggestState=?)"}},
      {{"SELECT FriendlyName FROM GroupViews WHERE Name = '{}'", {"team"}}, {"GroupViewsName (Name=?)"}},
      {{"SELECT Name FROM GroupViews WHERE (Owner = '{}' OR Owner = 'admin') ORDER BY FriendlyName", {"ann"}},
       {"GroupViewsOwner (Owner=?)"}},
      {{"SELECT SheetFile FROM Calendars INNER JOIN StyleSheets ON Calendars.StyleSheet = "
        "StyleSheets.SheetID WHERE "
        "Name = '{}'",
        {"ann"}},
       {"CalendarsName (Name=?)", "PRIMARY KEY (rowid=?)"}},
      {{"SELECT Name, FriendlyName, IsGroup FROM Calendars WHERE (IsHidden = no OR Name = '{}') ORDER BY "
        "IsGroup, "
        "FriendlyName",
        {"ann"}},
       {"COVERING INDEX CalendarsChoice"}},
  };
  for (const Case& test : cases) {
    const std::string plan = Plan(test.Query);
    EXPECT_EQ(plan.find("SCAN Events"), std::string::npos) << plan;
    for (const std::string& search : test.Searches) EXPECT_NE(plan.find(search), std::string::npos) << plan;
  }
}

}  // namespace
}  // namespace orlune
