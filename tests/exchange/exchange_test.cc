#include <algorithm>

#include "drivers/passwords/sodium_secrets.h"
#include "exchange/access_keys.h"
#include "exchange/change_log.h"
#include "exchange/file_import.h"
#include "exchange/upkeep.h"
#include "icalendar/icalendar_text.h"
#include "store/sharing_tables.h"
#include "support/calendar_fixture.h"

namespace orlune::testing {
namespace {

using std::chrono::year;

/// An event with what no row has a place for.
constexpr std::string_view kMeeting =
    "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Somebody//Else//"
    "EN\r\nBEGIN:VEVENT\r\nUID:meeting@example.org\r\n"
    "DTSTAMP:20040301T080000Z\r\nDTSTART:20040316T090000\r\nDTEND:20040316T100000\r\nSUMMARY:Meeting\r\n"
    "LOCATION:Room 5\r\nRRULE:FREQ=WEEKLY;COUNT=4\r\nBEGIN:VALARM\r\nACTION:DISPLAY\r\nDESCRIPTION:Now\r\n"
    "TRIGGER:-PT10M\r\nEND:VALARM\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n";

std::string Replaced(std::string text, std::string_view from, std::string_view to) {
  text.replace(text.find(from), from.size(), to);
  return text;
}

class Exchange : public CalendarFixture {
 protected:
  Exchange() { PrepareExchange(*Open(), secrets_); }

  std::unique_ptr<Connection> Open() { return driver_.Open(databasePath_); }
  Participant User(std::string_view name) { return LoadParticipant(*Open(), name).value(); }

  std::vector<SharedObject> Objects(std::string_view user, std::string_view calendar) {
    const Participant participant = User(user);
    return LoadObjects(*Open(), tools_, *participant.Find(calendar));
  }
  /// The text of the only object.
  std::string Text(std::string_view user, std::string_view calendar) {
    const auto objects = Objects(user, calendar);
    EXPECT_EQ(objects.size(), 1U);
    return objects.empty() ? "" : texts_.ObjectText(objects[0].Object, objects[0].Week);
  }

  WriteOutcome Put(std::string_view calendar, const std::string& name, std::string_view text,
                   const WriteCondition& condition = {}) {
    const Participant anna = User("anna");
    const SharedCalendar& target = *anna.Find(calendar);
    const auto connection = Open();
    const Week week = WeekOf(*connection, target);
    const auto planned = texts_.ReadObject(text, {week, tools_.Today, {}, "(no title)"});
    return PutObject(*connection, tools_, target, name, planned, condition);
  }

  std::string Token(std::string_view calendar) {
    return CurrentToken(*Open(), tools_, *User("anna").Find(calendar));
  }
  /// The names that have changed, then "-" and those that are gone; "invalid" for a token that is.
  std::vector<std::string> Changes(std::string_view calendar, std::string_view token) {
    const Participant anna = User("anna");
    const auto changes = ChangesSince(*Open(), tools_, *anna.Find(calendar), token);
    if (!changes) return {"invalid"};
    std::vector<std::string> names = changes->Changed;
    std::ranges::transform(changes->Removed, std::back_inserter(names),
                           [](const std::string& name) { return "-" + name; });
    std::ranges::sort(names);
    return names;
  }

  using Names = std::vector<std::string>;
  IcalendarText texts_{"Europe/Helsinki"};
  SodiumSecrets secrets_;
  const ExchangeTools tools_ = MakeExchangeTools(texts_, secrets_, regional_, clock_.Now().Day, nullptr);
};

TEST_F(Exchange, GivesAnObjectBackAsItCameUntilAPageChangesIt) {
  const WriteOutcome put = Put("anna", "m.ics", kMeeting);
  EXPECT_EQ(put.Result, WriteResult::kCreated);
  EXPECT_EQ(Text("anna", "anna"), kMeeting);
  EXPECT_EQ(Objects("anna", "anna")[0].ETag, put.ETag);
  EXPECT_EQ(Read(Statement("SELECT RepeatFrequency FROM Events")), "vko_1");

  Run(Statement("UPDATE Events SET EventName = 'It&#39;s moved', BeginTime = '09:30'"));
  const std::string changed = Text("anna", "anna");
  for (const char* part : {"SUMMARY:It's moved", "DTSTART;TZID=Europe/Helsinki:20040316T093000",
                           "LOCATION:Room 5", "TRIGGER:-PT10M"})
    EXPECT_NE(changed.find(part), std::string::npos) << part << " in " << changed;
  EXPECT_NE(Objects("anna", "anna")[0].ETag, put.ETag);
  EXPECT_EQ(Put("anna", "m.ics", kMeeting, {.IfMatch = "\"" + put.ETag + "\""}).Result,
            WriteResult::kConditionFailed);
  EXPECT_EQ(Put("anna", "m.ics", kMeeting, {.IfNoneMatch = "*"}).Result, WriteResult::kConditionFailed);
  EXPECT_EQ(Put("anna", "m.ics", kMeeting).ETag, put.ETag);
  EXPECT_EQ(Read(Statement("SELECT EventName FROM Events")), "Meeting");
}

TEST_F(Exchange, KeepsInTheRowWhatAClientDidNotChange) {
  // Texts cannot say when this series was to begin before its first day, nor an end without a begin.
  AddEvent("anna", "Sport", "Type, BeginDate, EndDate, EndTime, RepeatWeekday, RepeatFrequency",
           "'weekday', '3/1/2004', '4/30/2004', '18:00', '4', 'vko_2'");
  const std::string text = Text("anna", "anna");
  const std::string name = Objects("anna", "anna")[0].Object.Name;
  EXPECT_EQ(Put("anna", name, Replaced(text, "SUMMARY:Sport", "SUMMARY:Sauna")).Result,
            WriteResult::kChanged);
  EXPECT_EQ(ReadRows(Statement("SELECT EventName, Type, BeginDate, EndTime FROM Events"),
                     {"EventName", "Type", "BeginDate", "EndTime"}),
            Names{"Sauna|weekday|2004-03-01|18:00"});
  EXPECT_EQ(Text("anna", "anna"), Replaced(text, "SUMMARY:Sport", "SUMMARY:Sauna"));
}

TEST_F(Exchange, StoresMovedAndLeftOutDays) {
  const std::string moved = Replaced(
      Replaced(std::string(kMeeting), "LOCATION", "EXDATE:20040330T090000\r\nLOCATION"), "END:VEVENT\r\n",
      "END:VEVENT\r\nBEGIN:VEVENT\r\nUID:meeting@example.org\r\nDTSTAMP:20040301T080000Z\r\n"
      "RECURRENCE-ID:20040323T090000\r\nDTSTART:20040324T110000\r\nSUMMARY:Later\r\nEND:VEVENT\r\n");
  EXPECT_EQ(Put("anna", "m.ics", moved).Result, WriteResult::kCreated);
  EXPECT_EQ(Text("anna", "anna"), moved);
  EXPECT_EQ(
      ReadRows(Statement("SELECT EventDay, Role FROM EventDays ORDER BY EventDay"), {"EventDay", "Role"})
          .size(),
      2U);
  Run(Statement("DELETE FROM Events WHERE EventName = 'Later'"));
  const std::string rest = Text("anna", "anna");
  EXPECT_EQ(rest.find("RECURRENCE-ID"), std::string::npos) << rest;
  EXPECT_EQ(Put("anna", "m.ics", kMeeting).Result, WriteResult::kChanged);
  EXPECT_EQ(Read(Statement("SELECT EventDay FROM EventDays")), "(none)");
}

TEST_F(Exchange, ShowsOthersOnlyTheTimeOfPrivateEvents) {
  AddEvent("sales", "Party", "Type, BeginDate, Comments, Private", "'none', '3/16/2004', 'secret', yes");
  AddEvent("sales", "Unanswered", "Type, BeginDate, SuggestState", "'none', '3/16/2004', 'undecided'");
  Run(Statement("UPDATE Calendars SET MemberOfGroups = 'sales' WHERE Name = 'ben'"));
  Put("sales", "m.ics", Replaced(std::string(kMeeting), "LOCATION:Room 5", "CLASS:PRIVATE"));
  Run(Statement("DELETE FROM Events WHERE EventName = 'Party'"));
  EXPECT_EQ(Objects("anna", "sales").size(), 2U);
  const std::string text = Text("ben", "sales");
  EXPECT_NE(text.find("SUMMARY:Private"), std::string::npos);
  for (const char* secret : {"secret", "Meeting", "meeting@", "TRIGGER"})
    EXPECT_EQ(text.find(secret), std::string::npos) << secret;
  EXPECT_NE(Objects("ben", "sales")[0].Object.Name, "m.ics");
  EXPECT_EQ(User("ben").Find("anna"), nullptr);
  const Participant ben = User("ben");
  const auto planned = texts_.ReadObject(kMeeting, {Week(1, "1, 7"), tools_.Today, {}, ""});
  EXPECT_EQ(PutObject(*Open(), tools_, *ben.Find("sales"), "m.ics", planned, {}).Result,
            WriteResult::kForbidden);
}

TEST_F(Exchange, TellsWhatHasChangedSinceAToken) {
  const std::string first = Token("anna");
  EXPECT_EQ(Changes("anna", first), Names{});
  Put("anna", "m.ics", kMeeting);
  AddEvent("anna", "Typed", "Type, BeginDate", "'none', '3/16/2004'");
  const std::string second = Token("anna");
  const Names both = Changes("anna", first);
  EXPECT_EQ(both.size(), 2U);
  EXPECT_EQ(both.back(), "m.ics");
  Run(Statement("DELETE FROM Events WHERE EventName = 'Meeting'"));
  Run(Statement("UPDATE Events SET Owner = 'sales'"));
  EXPECT_EQ(Changes("anna", second), (Names{"-" + both.front(), "-m.ics"}));
  EXPECT_EQ(Changes("sales", Token("sales")), Names{});
  Run(Statement("UPDATE Calendars SET Weekend = '1' WHERE Name = 'anna'"));
  for (const std::string& token : {second, std::string("x"), std::string(), "other" + first})
    EXPECT_EQ(Changes("anna", token), Names{"invalid"}) << token;
}

TEST_F(Exchange, HasEachUidOnceInACalendar) {
  Put("anna", "m.ics", kMeeting);
  EXPECT_EQ(Put("anna", "other.ics", kMeeting).ConflictingName, "m.ics");
  EXPECT_EQ(Put("anna", "m.ics", Replaced(std::string(kMeeting), "meeting@", "x@")).Result,
            WriteResult::kUidConflict);
  EXPECT_EQ(Put("sales", "other.ics", kMeeting).Result, WriteResult::kCreated);
  AddEvent("anna", "Typed", "Type, BeginDate", "'none', '3/16/2004'");
  const auto objects = Objects("anna", "anna");
  EXPECT_EQ(Put("anna", "copy.ics",
                Replaced(std::string(kMeeting), "meeting@example.org", objects.back().Object.Uid))
                .ConflictingName,
            objects.back().Object.Name);
  // Neither is the address of an event to come to be had.
  const std::string next = "99" + objects.back().Object.Name;
  EXPECT_EQ(Put("anna", next, Replaced(std::string(kMeeting), "meeting@", "x@")).Result,
            WriteResult::kForbidden);
}

TEST_F(Exchange, ImportsAFileTwiceWithoutDoublingIt) {
  const Participant anna = User("anna");
  const SharedCalendar& calendar = *anna.Find("anna");
  const std::string file = Replaced(std::string(kMeeting), "END:VCALENDAR",
                                    "BEGIN:VEVENT\r\nUID:day\r\nDTSTAMP:20040301T080000Z\r\nDTSTART;VALUE="
                                    "DATE:20040401\r\nEND:VEVENT\r\nEND:VCALENDAR");
  for (const ImportStep step : {ImportStep::kAdd, ImportStep::kNothing}) {
    const ImportPlan plan = PlanImport(*Open(), tools_, calendar, file);
    ASSERT_EQ(plan.Objects.size(), 2U);
    for (const ImportedObject& object : plan.Objects) EXPECT_EQ(object.Step, step);
    RunImport(*Open(), tools_, calendar, plan);
    EXPECT_EQ(Objects("anna", "anna").size(), 2U);
  }
  Run(Statement("UPDATE Events SET EventName = 'Other' WHERE EventName = 'Meeting'"));
  const ImportPlan plan = PlanImport(*Open(), tools_, calendar, file);
  EXPECT_EQ(plan.Objects.front().Step, ImportStep::kChange);
}

TEST_F(Exchange, ListsEndlessSeriesFurtherAsTimePasses) {
  const std::string endless =
      Replaced(std::string(kMeeting), "FREQ=WEEKLY;COUNT=4", "FREQ=MONTHLY;BYDAY=-1FR");
  Put("anna", "m.ics", endless);
  const auto highest = [&] { return Objects("anna", "anna")[0].Object.Events[0].Days.Listed.back(); };
  const Date before = highest();
  EXPECT_TRUE(before > year{2009} / 2 / 1);
  ExchangeTools later = tools_;
  later.Today += std::chrono::days{7 * 365};
  KeepUpExchange(*Open(), later);
  EXPECT_TRUE(highest() > before + std::chrono::days{360});
  EXPECT_EQ(Text("anna", "anna"), endless);
}

TEST_F(Exchange, FindsAppPasswordsAndLinksByTheirSecretsOnly) {
  const auto connection = Open();
  const KeyTools tools{secrets_, regional_, clock_.Now().Day};
  const std::string password = MakeAppPassword(*connection, tools, "anna", "Phone").value();
  const auto found = FindAppPassword(*connection, secrets_, "Anna", password);
  ASSERT_TRUE(found);
  EXPECT_FALSE(FindAppPassword(*connection, secrets_, "ben", password));
  EXPECT_FALSE(FindAppPassword(*connection, secrets_, "anna", password + "x"));
  NoteUseOfAppPassword(*connection, tools, *found);
  EXPECT_EQ(AppPasswordsOf(*connection, "anna")[0].LastUsed, clock_.Now().Day);
  RevokeAppPassword(*connection, "ben", found->Id);
  EXPECT_TRUE(FindAppPassword(*connection, secrets_, "anna", password));
  RevokeAppPassword(*connection, "anna", found->Id);
  EXPECT_FALSE(FindAppPassword(*connection, secrets_, "anna", password));

  const std::string link = MakeSecretLink(*connection, tools, "anna", "sales", "Screen").value();
  const auto target = [&] { return FindSecretLink(*Open(), secrets_, link); };
  EXPECT_EQ(target()->Calendar, "sales");
  Run(Statement("UPDATE Calendars SET Name = 'sellers' WHERE Name = 'sales'"));
  EXPECT_EQ(target()->Calendar, "sellers");
  Run(Statement("DELETE FROM Calendars WHERE Name = 'anna'"));
  EXPECT_FALSE(target());
}

}  // namespace
}  // namespace orlune::testing
