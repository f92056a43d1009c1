#include "drivers/database_fixture.h"
#include "drivers/spliced.h"

namespace orlune {
namespace {

using testing::Spliced;

class Queries : public testing::DatabaseFixture {
 protected:
  using DatabaseFixture::Names;
  Texts Names(const StatementText& query) { return Column(*connection_, query, "Name"); }

  std::unique_ptr<Connection> connection_ = Open();
};

TEST_F(Queries, RoundTripEveryType) {
  connection_->Execute(
      Statement("INSERT INTO Events (EventName, Type, BeginDate, BeginTime, Private, Comments) VALUES ('{}', "
                "'none', '{}', "
                "'{}', {}, Null)",
                "it's; --", "3/5/2004", "02:30 PM", "Yes"));
  connection_->Execute(Statement("INSERT INTO Messages (SentDate, Content, Viewed) VALUES ('{}', '{}', Null)",
                                 "3/5/2004 14:30:05", "0012"));
  const Date day{std::chrono::year{2004} / 3 / 5};
  const auto event = connection_->Query(Statement("SELECT * FROM Events"));
  ASSERT_TRUE(event->Next());
  EXPECT_EQ(event->Get(event->Column("eventid")), Value(std::int64_t{1}));
  EXPECT_EQ(event->Get(event->Column("EVENTNAME")), Value(std::string_view("it's; --")));
  EXPECT_EQ(event->Get(event->Column("BeginDate")), Value(day));
  EXPECT_EQ(event->Get(event->Column("EndDate")), Value());
  EXPECT_EQ(event->Get(event->Column("BeginTime")), Value(TimeOfDay{14 * 3600 + 30 * 60}));
  EXPECT_EQ(event->Get(event->Column("Private")), Value(true));
  EXPECT_EQ(event->Get(event->Column("Comments")), Value());
  EXPECT_THROW(event->Column("IsGroup"), DatabaseError);
  EXPECT_FALSE(event->Next());
  EXPECT_FALSE(event->Next());

  const auto message = connection_->Query(Statement("SELECT SentDate, Content, Viewed FROM Messages"));
  ASSERT_TRUE(message->Next());
  EXPECT_EQ(message->Get(0), Value(DateTime{day, TimeOfDay{14 * 3600 + 30 * 60 + 5}}));
  EXPECT_EQ(message->Get(1), Value(std::string_view("0012")));
  EXPECT_EQ(message->Get(2), Value(false));
}

TEST_F(Queries, SetDefaultsInNewRows) {
  connection_->Execute(Statement("INSERT INTO Calendars (Name) VALUES ('ann')"));
  const auto rows = connection_->Query(Statement("SELECT * FROM Calendars"));
  ASSERT_TRUE(rows->Next());
  const std::vector<std::pair<const char*, Value>> defaults{
      {"StyleSheet", std::int64_t{1}},
      {"DayBegin", std::int64_t{8}},
      {"DayEnd", std::int64_t{18}},
      {"StartMode", std::string_view("month")},
      {"IsGroup", false},
      {"MemberOfGroups", std::string_view("")},
      {"MondayFirst", true},
      {"AdminOfGroups", std::string_view("")},
  };
  for (const auto& [name, expected] : defaults) EXPECT_EQ(rows->Get(rows->Column(name)), expected) << name;
}

TEST_F(Queries, OrderByKeysThenByCounter) {
  for (const auto& [name, friendlyName] : std::vector<std::pair<const char*, const char*>>{
           {"c", "same"}, {"a", "SAME"}, {"b", "other"}, {"d", "same"}}) {
    AddCalendar(*connection_, name, friendlyName);
  }
  connection_->Execute(Statement("INSERT INTO Calendars (Name) VALUES ('e')"));
  const std::vector<std::pair<const char*, Texts>> cases{
      {"SELECT Name FROM Calendars", {"c", "a", "b", "d", "e"}},
      {"SELECT Name FROM Calendars WHERE Name IN ('d', 'a', 'c')", {"c", "a", "d"}},
      {"SELECT Name FROM Calendars WHERE Name > 'a'", {"c", "b", "d", "e"}},
      {"SELECT Name FROM Calendars ORDER BY FriendlyName", {"e", "b", "c", "a", "d"}},
      {"SELECT Name FROM Calendars ORDER BY FriendlyName DESC", {"c", "a", "d", "b", "e"}},
      {"SELECT TOP 2 Name FROM Calendars ORDER BY CalendarID DESC", {"e", "d"}},
      {"SELECT DISTINCT FriendlyName AS Name FROM Calendars", {"same", "other", "Null"}},
      {"SELECT DISTINCT FriendlyName AS Name FROM Calendars ORDER BY FriendlyName",
       {"Null", "other", "same"}},
      {"SELECT DISTINCT FriendlyName AS Name FROM Calendars WHERE Name <> 'c'", {"SAME", "other", "Null"}},
      {"SELECT Count(FriendlyName) AS Name FROM Calendars", {"4"}},
  };
  for (const auto& [query, expected] : cases) EXPECT_EQ(Names(Spliced(query, {})), expected) << query;
}

TEST_F(Queries, OrderTextsByFoldedCodePoints) {
  const Texts ascending{"", "a", "AA", "ab", "B", "ß", "ST", "z", "Ä", "Å", "ı", "σ", "日"};
  for (auto name = ascending.rbegin(); name != ascending.rend(); ++name) AddCalendar(*connection_, *name);
  EXPECT_EQ(Names(Statement("SELECT Name FROM Calendars ORDER BY Name")), ascending);
}

TEST_F(Queries, JoinInTheOrderOfTheFirstTable) {
  for (const char* name : {"ann", "bob"}) AddCalendar(*connection_, name, name);
  for (const char* owner : {"BOB", "Ann", "bob", "nobody"}) {
    connection_->Execute(Statement("INSERT INTO Events (Owner) VALUES ('{}')", owner));
  }
  EXPECT_EQ(Names(Statement("SELECT FriendlyName AS Name FROM Events INNER JOIN Calendars ON Events.Owner = "
                            "Calendars.Name")),
            (Texts{"bob", "ann", "bob"}));
}

TEST_F(Queries, CompareAndSearchByUnicodesRules) {
  struct Case {
    const char* Stored;
    const char* Operator;
    const char* Sought;
    bool IsFound;
  };
  const std::vector<Case> cases{
      {"Ann", "=", "ANN", true},
      {"Ärzte", "=", "äRZTE", true},
      {"straße", "=", "STRASSE", true},
      {"ΣΑΣ", "=", "σας", true},
      {"İ", "=", "i̇", true},
      {"İ", "=", "i", false},
      {"ä", "=", "a", false},
      {"a", "<", "Ä", true},
      {"Z", "<", "ä", true},
      {"Straße", "LIKE", "STRASSE", true},
      {"Σ", "LIKE", "ς", true},
      {"日本語", "LIKE", "___", true},
      {"日本語", "LIKE", "__", false},
      {"50%", "LIKE", "50\\%", false},
      {"a[b]*?#c", "LIKE", "A[B]*?#C", true},
      {"abcabd", "LIKE", "%abd", true},
      {"", "LIKE", "%", true},
      {"", "LIKE", "_", false},
      {"ab", "LIKE", "%a_%b%", false},
      {"aaab", "LIKE", "a%%b", true},
      {"The Lunch", "LIKE", "%e lUN%", true},
      {"The Lunch", "LIKE", "%lunches%", false},
      {"The Lunch", "LIKE", "%%", true},
      {"Ein Ku\u017f\u017f", "LIKE", "%kuss%", true},
      {"ann", "<>", "ANN", false},
  };
  for (const Case& test : cases) {
    connection_->Execute(Statement("DELETE FROM Calendars"));
    AddCalendar(*connection_, test.Stored);
    const Spliced query("SELECT Name FROM Calendars WHERE Name " + std::string(test.Operator) + " '{}'",
                        {test.Sought});
    EXPECT_EQ(!Names(query).empty(), test.IsFound)
        << test.Stored << ' ' << test.Operator << ' ' << test.Sought;
  }
}

TEST_F(Queries, AreSafeFromSqlInjection) {
  AddCalendar(*connection_, "ann");
  AddCalendar(*connection_, "o'brien");
  EXPECT_EQ(Names(Statement("SELECT Name FROM Calendars WHERE Name = '{}'", "' OR '1'='1")), Texts{});
  EXPECT_EQ(Names(Statement("SELECT Name FROM Calendars WHERE Name LIKE '%{}%'", "'")), Texts{"o'brien"});
  EXPECT_THROW(Names(Statement("SELECT Name FROM Calendars WHERE CalendarID = {}", "1 OR 1=1")),
               DatabaseError);
  EXPECT_THROW(connection_->Execute(Statement("DELETE FROM Calendars WHERE CalendarID IN ({})", "1) --")),
               DatabaseError);
  EXPECT_EQ(Names(Statement("SELECT Name FROM Calendars")).size(), 2U);
}

TEST_F(Queries, ReportErrorsWithoutValues) {
  const std::vector<std::pair<Spliced, const char*>> cases{
      {{"SELECT Name FROM Diaries", {}}, "no table Diaries in: SELECT Name FROM Diaries"},
      {{"SELECT Nam FROM Calendars", {}}, "no column Nam in: SELECT Nam FROM Calendars"},
      {{"SELECT Events.Name FROM Events INNER JOIN Calendars ON Owner = Name", {}}, "no column Name in: "},
      {{"SELECT Name FROM Calendars WHERE DayBegin = '{}'", {"secret"}},
       "column DayBegin: expected a whole number in: SELECT Name FROM Calendars WHERE DayBegin = '{}'"},
      {{"SELECT Name FROM Calendars WHERE IsGroup LIKE 'a'", {}}, "LIKE: expected a text"},
      {{"DELETE FROM Calendars", {}}, "not a query"},
      {{"SELECT DISTINCT * FROM Calendars", {}}, "DISTINCT: expected columns"},
  };
  for (const auto& [query, expected] : cases) {
    try {
      connection_->Query(query);
      ADD_FAILURE() << expected;
    } catch (const DatabaseError& error) {
      EXPECT_TRUE(std::string_view(error.what()).starts_with(expected)) << error.what();
    }
  }
  EXPECT_THROW(connection_->Execute(Statement("SELECT Name FROM Calendars")), DatabaseError);
}

}  // namespace
}  // namespace orlune
