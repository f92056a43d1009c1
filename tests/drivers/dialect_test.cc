#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "drivers/dialect/dialect_error.h"
#include "drivers/dialect/evaluation.h"
#include "drivers/dialect/parser.h"
#include "drivers/dialect/shape.h"
#include "drivers/regional.h"
#include "drivers/spliced.h"

namespace orlune::dialect {
namespace {

using orlune::testing::Spliced;
using Values = std::vector<std::string>;

std::string KeyOf(const StatementText& statement) {
  std::string key;
  WriteShapeKey(statement, key);
  return key;
}

struct Case {
  const char* Format;
  Values Spliced;
};

TEST(DialectParser, AcceptsMoreThanThePagesUse) {
  const std::vector<Case> cases{
      {"INSERT INTO Events (EventName, Private, SuggID) VALUES ('{}', {}, {})", {"x", "YES", "null"}},
      {"UPDATE Calendars SET DayBegin = {}, StyleSheet = {} WHERE (CalendarID = {})", {"8", "-1", "+12"}},
      {"SELECT TypeID AS ID FROM EventTypes WHERE Not (TypeName Is Not Null) And TypeID <> {}", {"3"}},
      {"delete from Events", {}},
  };
  for (const Case& test : cases) EXPECT_NO_THROW(Parse(Spliced(test.Format, test.Spliced))) << test.Format;
}

TEST(DialectParser, RejectsEverythingElse) {
  const std::vector<Case> cases{
      {"", {}},
      {"DROP TABLE Events", {}},
      {"SELECT Name FROM Calendars; DELETE FROM Events", {}},
      {"SELECT Name FROM Calendars -- all", {}},
      {"SELECT Name FROM Calendars WHERE", {}},
      {"SELECT Name FROM Calendars WHERE Name = 'ann", {}},
      {"SELECT Name FROM Calendars WHERE Name LIKE 5", {}},
      {"SELECT Name FROM Calendars WHERE Name = 'a' 'b'", {}},
      {"SELECT Name FROM Calendars WHERE CalendarID = 99999999999999999999", {}},
      {"SELECT Name, FROM Calendars", {}},
      {"SELECT Count(Name) FROM Calendars", {}},
      {"SELECT TOP {} Name FROM Calendars", {"1"}},
      {"INSERT INTO Messages (Sender, Recipient) VALUES ('a')", {}},
      {"CREATE TABLE T (A LONG (4))", {}},
      {"CREATE TABLE T (A BLOB)", {}},
      {"SELECT {} FROM Calendars", {"Name"}},
      {"SELECT Name FROM {}", {"Calendars"}},
      {"SELECT Name FROM Calendars WHERE {} = 5", {"5"}},
      {"SELECT Name FROM Calendars WHERE CalendarID = {}", {""}},
      {"SELECT Name FROM Calendars WHERE CalendarID = {}", {"1 OR 1=1"}},
      {"SELECT Name FROM Calendars WHERE CalendarID = {}", {"1, 2"}},
      {"SELECT Name FROM Calendars WHERE CalendarID = {}{}", {"1", "2"}},
      {"SELECT Name FROM Calendars WHERE CalendarID = 1{}", {"2"}},
      {"SELECT Name FROM Calendars WHERE Name = {}", {"'ann'"}},
      {"SELECT Name FROM Calendars WHERE Name Is {}", {"Null"}},
      {"DELETE FROM Events WHERE EventID IN ({})", {"4,9"}},
      {"DELETE FROM Events WHERE EventID IN ({})", {"4, "}},
      {"DELETE FROM Events WHERE EventID IN ({})", {"4) OR (1=1"}},
      {"SELECT Name FROM Calendars WHERE Name = '\x01t'", {}},
  };
  for (const Case& test : cases) {
    const Spliced statement(test.Format, test.Spliced);
    const auto prepare = [&] {
      KeyOf(statement);
      Parse(statement);
    };
    EXPECT_THROW(prepare(), DialectError) << test.Format;
  }
  EXPECT_THROW(Parse(Spliced("SELECT Name FROM Calendars WHERE " + std::string(5000, '('), {})),
               DialectError);
}

TEST(DialectParser, ReportsThePositionOfAnError) {
  try {
    Parse(Spliced("SELECT Name FRM Calendars", {}));
    FAIL();
  } catch (const DialectError& error) {
    EXPECT_EQ(error.Position, 12U);
  }
}

TEST(DialectParser, ReadsKeywordsInAnyCase) {
  EXPECT_EQ(Parse(Spliced("select Name from T where A in (1) order by Name asc", {})),
            Parse(Spliced("SELECT Name FROM T WHERE A IN (1) ORDER BY Name ASC", {})));
}

TEST(SplicedValue, NeverChangesTheStatementAroundIt) {
  const char* format = "SELECT Name FROM Calendars WHERE Name = '{}' AND FriendlyName LIKE '%{}_{}%'";
  const Spliced plain(format, {"a", "b", "c"});
  for (const char* hostile :
       {"", "'", "''", "' OR '1'='1", "'; DELETE FROM Events; --", "/*", "\\'", "%", "{}", "\x01t"}) {
    const Spliced statement(format, {hostile, hostile, hostile});
    EXPECT_EQ(KeyOf(statement), KeyOf(plain)) << hostile;
    EXPECT_EQ(Parse(statement), Parse(plain)) << hostile;
  }
}

TEST(ShapeKey, DiffersWhereATranslationWould) {
  const char* format = "UPDATE Events SET Private = {} WHERE EventID IN ({})";
  const std::vector<Values> shapes{{"yes", "1"}, {"no", "1"},   {"Null", "1"},
                                   {"1", "1"},   {"1", "1, 2"}, {"1, 2", "1"}};
  std::set<std::string> keys;
  for (const Values& values : shapes) keys.insert(KeyOf(Spliced(format, values)));
  EXPECT_EQ(keys.size(), shapes.size());
  EXPECT_EQ(KeyOf(Spliced(format, {"YES", "7, -8"})), KeyOf(Spliced(format, {"yes", "1, 2"})));
  EXPECT_NE(KeyOf(Spliced("SELECT A FROM T WHERE A = '{}'", {"x"})),
            KeyOf(Spliced("SELECT A FROM T WHERE A = 'x'", {})));
}

TEST(MaskedText, HidesValues) {
  EXPECT_EQ(MaskedText(Spliced("UPDATE T SET Password = '{}', A = {}", {"secret", "5"})),
            "UPDATE T SET Password = '{}', A = {}");
}

/// The value in a column of the literal in "... = <literal>", as text; "error" when it does not fit.
std::string Stored(ColumnType type, const Spliced& statement) {
  const auto select = std::get<Select>(Parse(statement));
  const auto& comparison = std::get<Comparison>(select.Where->Node);
  const RegionalSettings regional = orlune::testing::AmericanSettings();
  std::string scratch;
  try {
    const StoredValue stored =
        Evaluate(std::get<Literal>(comparison.Right), {"Searched", type}, statement, regional, scratch);
    if (const auto* number = std::get_if<std::int64_t>(&stored)) return '#' + std::to_string(*number);
    if (const auto* text = std::get_if<std::string_view>(&stored)) return std::string(*text);
    return "Null";
  } catch (const DatabaseError& error) {
    const std::string misfit = "column Searched: expected " + std::string(DescribeType(type));
    return error.what() == misfit ? "error" : error.what();
  }
}

TEST(Evaluation, TurnsLiteralsIntoTheColumnsType) {
  struct Conversion {
    ColumnType Type;
    const char* Literal;
    Values Spliced;
    const char* Expected;
  };
  const std::vector<Conversion> cases{
      {ColumnType::kText, "'O''Brien'", {}, "O'Brien"},
      {ColumnType::kText, "'{}'", {"O'Brien"}, "O'Brien"},
      {ColumnType::kText, "'%{}''{}%'", {"a", "'"}, "%a''%"},
      {ColumnType::kText, "'{}'", {""}, ""},
      {ColumnType::kText, "{}", {"12"}, "12"},
      {ColumnType::kText, "yes", {}, "error"},
      {ColumnType::kLong, "'{}'", {" 12 "}, "#12"},
      {ColumnType::kLong, "{}", {"+12"}, "#12"},
      {ColumnType::kLong, "'{}'", {"12x"}, "error"},
      {ColumnType::kLong, "'{}'", {""}, "error"},
      {ColumnType::kLong, "Null", {}, "Null"},
      {ColumnType::kLong, "{}", {"9223372036854775808"}, "whole number out of range"},
      {ColumnType::kCounter, "'{}'", {"1 OR 1=1"}, "error"},
      {ColumnType::kYesNo, "{}", {"Yes"}, "#1"},
      {ColumnType::kYesNo, "'{}'", {"no"}, "#0"},
      {ColumnType::kYesNo, "{}", {"-1"}, "#1"},
      {ColumnType::kYesNo, "'{}'", {"perhaps"}, "error"},
      {ColumnType::kDate, "'{}'", {"3/5/2004"}, "2004-03-05"},
      {ColumnType::kDate, "DateValue('{}')", {"2004-03-05"}, "2004-03-05"},
      {ColumnType::kDate, "DateValue('{}')", {"12/31/9999"}, "9999-12-31"},
      {ColumnType::kDate, "DateValue('{}')", {"31/12/2004"}, "error"},
      {ColumnType::kDate, "{}", {"5"}, "error"},
      {ColumnType::kTime, "'{}'", {"14:30"}, "14:30:00"},
      {ColumnType::kTime, "'{}'", {"02:30 PM"}, "14:30:00"},
      {ColumnType::kTime, "'{}'", {"12:00 AM"}, "00:00:00"},
      {ColumnType::kTime, "'{}'", {"24:00"}, "error"},
      {ColumnType::kTime, "DateValue('{}')", {"3/5/2004"}, "error"},
      {ColumnType::kDateTime, "'{}'", {"3/5/2004 09:08:07"}, "2004-03-05 09:08:07"},
      {ColumnType::kDateTime, "DateValue('{}')", {"3/5/2004"}, "2004-03-05 00:00:00"},
  };
  for (const Conversion& test : cases) {
    const Spliced statement("SELECT A FROM T WHERE A = " + std::string(test.Literal), test.Spliced);
    EXPECT_EQ(Stored(test.Type, statement), test.Expected) << test.Literal << ' ' << DescribeType(test.Type);
  }
}

TEST(ReadStoredText, ReadsOnlyWhatIsStoredSo) {
  EXPECT_EQ(ReadStoredText(ColumnType::kDate, "2004-02-29"),
            Value(Date{std::chrono::year{2004} / std::chrono::February / 29}));
  EXPECT_EQ(ReadStoredText(ColumnType::kTime, "23:59:58"), Value(TimeOfDay{86398}));
  for (const char* broken :
       {"", "2005-02-29", "2004-2-29", "2004-02-29 10:00:00", "04-02-29xx", "2004/02/29"}) {
    EXPECT_EQ(ReadStoredText(ColumnType::kDate, broken), Value()) << broken;
  }
  for (const char* broken : {"", "24:00:00", "10:60:00", "10:00", "1 :00:00"}) {
    EXPECT_EQ(ReadStoredText(ColumnType::kTime, broken), Value()) << broken;
  }
  EXPECT_EQ(ReadStoredText(ColumnType::kDateTime, "2004-02-29T10:00:00"), Value());
}

}  // namespace
}  // namespace orlune::dialect
