#include <array>

#include "support/calendar_fixture.h"
#include "support/golden_page.h"
#include "support/page_text.h"

namespace orlune::testing {
namespace {

class EventPage : public CalendarFixture {
 protected:
  EventPage() {
    Run(Statement("INSERT INTO EventTypes (TypeName, FileName) VALUES ('Meeting', 'type_meeting.gif')"));
    LogIn("anna", "secret");
  }

  /// The form of a valid single event, with `changes`.
  static FakeHost::Fields Form(const FakeHost::Fields& changes = {}) {
    FakeHost::Fields form{{"title", "Lunch"},   {"reptype", "none"},  {"date1", "3/15/2004"},
                          {"time1", "- - - -"}, {"time2", "- - - -"}, {"calendar", "anna"},
                          {"id", ""},           {"suggstate", ""}};
    for (const auto& [name, value] : changes) form[name] = value;
    return form;
  }
  static FakeHost::Fields Kind(const char* kind, const FakeHost::Fields& changes = {}) {
    FakeHost::Fields form = Form(changes);
    form["reptype"] = kind;
    form.emplace("date2", "4/15/2004");
    return form;
  }
  std::vector<std::string> Stored() {
    return ReadRows(Statement("SELECT * FROM Events ORDER BY EventID"),
                    {"SuggID", "SuggestState", "EventName", "Owner", "Type", "Private", "BeginDate",
                     "BeginTime", "EndTime", "Comments", "EventType", "EndDate", "RepeatWeekday",
                     "RepeatFrequency", "RepeatDay", "RepeatWeekends"});
  }
  using Rows = std::vector<std::string>;
};

TEST_F(EventPage, StoresTheFormAndKeepsColumnsOfOtherKinds) {
  Post("p=e&act=save", Kind("weekday", {{"repweekday", "2"}, {"frequency", "kk_1"}, {"time1", "09:00"}}));
  Run(Statement("UPDATE Events SET SuggID = '77' WHERE EventID = 1"));
  const FakeHost::Fields changed{{"id", "1"},
                                 {"title", "it's \"so\" <B>"},
                                 {"addinfo", "*yes\r\n'😀'"},
                                 {"time1", "09:30"},
                                 {"time2", "10:15"},
                                 {"private", "on"},
                                 {"type", "Meeting"},
                                 {"repday", "1, 31"},
                                 {"calendar", "sales"},
                                 {"repweekends", "vkl_pe"},
                                 {"suggstate", "accepted"}};
  EXPECT_EQ(Post("p=e&act=save", Kind("month", changed)).RedirectedTo, "/cal.asp");
  EXPECT_EQ(Stored(), Rows{"77|accepted|it&#39;s &quot;so&quot; <B>|sales|month|yes|2004-03-15|09:30|10:15|"
                           "*yes\r\n&#39;😀&#39;|Meeting|2004-04-15|2|kk_1|1, 31|vkl_pe"});
}

TEST_F(EventPage, ReportsAllErrorsAtOnce) {
  const std::string e811 = "The event title field is empty.\\n";
  const std::string e812 = "The start date is not a valid date.\\n";
  const std::string e813 = "The end date is not a valid date.\\n";
  const std::string e814 = "The start date must be earlier than the end date.\\n";
  const std::string e815 = "You must also select a start time.\\n";
  const std::string e816 = "The start time must be earlier than the end time.\\n";
  const std::string e817 = "Repeat option is \"By weekday\" but no weekday has been selected.\\n";
  const std::string e818 =
      "Repeat option is \"By weekday\", but the repetition frequency has not been set.\\n";
  const std::string e819 = "Repeat option is \"Monthly\", but no day has been selected.\\n";
  const struct {
    FakeHost::Fields Posted;
    std::string Expected;
  } cases[] = {
      {Form({{"title", ""}}), e811},
      {Form({{"date1", "2/30/2004"}}), e812},
      {Kind("day", {{"date1", "x"}, {"date2", "y"}}), e812},
      {Kind("day", {{"date2", "4/31/2004"}}), e813},
      {Kind("day", {{"date2", "3/15/2004"}}), e814},
      {Form({{"time2", "10:00"}}), e815},
      {Form({{"time1", "25:00"}}), e815},
      {Form({{"time1", "10:00"}, {"time2", "10:00"}}), e816},
      {Form({{"time1", "10:00"}, {"time2", "soon"}}), e816},
      {Kind("weekday"), e817 + e818},
      {Kind("weekday", {{"repweekday", "2"}}), e818},
      {Kind("month"), e819},
      {Kind("weekday", {{"title", ""}, {"date2", "x"}, {"time2", "10:00"}}),
       e811 + e813 + e815 + e817 + e818},
  };
  for (const auto& c : cases) {
    const Answer& answer = Post("p=e&act=save", c.Posted);
    EXPECT_EQ(AlertOf(answer.Body), c.Expected);
    EXPECT_EQ(answer.RedirectedTo, "") << c.Expected;
  }
  EXPECT_EQ(Stored(), Rows{});
  EXPECT_EQ(Post("p=e&act=save", Form({{"date2", "1/1/1999"}, {"time1", "10:00"}, {"time2", "10:01"}}))
                .RedirectedTo,
            "/cal.asp");
}

TEST_F(EventPage, ShowsItsForm) {
  AddEvent("anna", "a", "Type, BeginDate, BeginTime, Comments",
           "'none', '3/15/2004', '09:00', 'one\r\n<B>two</TEXTAREA>'");
  const FakeHost::Fields typed{{"title", "\"a\" </TITLE>&lt;"},
                               {"date1", "soon"},
                               {"time1", "14:30"},
                               {"calendar", "sales"},
                               {"addinfo", "\r\n</TEXTAREA> & \"b\""},
                               {"repday", "1, 31"},
                               {"repweekends", "vkl_ma"},
                               {"type", "Meeting"},
                               {"private", "on"},
                               {"repweekday", "3"},
                               {"frequency", "vko_2"}};
  const struct {
    const char* Golden;
    const char* Query;
    FakeHost::Fields Posted;
  } cases[] = {
      {"events/new", "p=e&cd=3/20/2004", {}},
      {"events/stored", "p=e&id=1", {}},
      {"events/daily", "p=e", Kind("day")},
      {"events/weekday", "p=e", Kind("weekday", {{"repweekday", "1, 3"}, {"frequency", "kk_4"}})},
      {"events/typed", "p=e", Kind("month", typed)},
      {"events/yearly", "p=e", Kind("year", {{"repweekends", "vkl_no"}, {"repday", "4"}})},
  };
  for (const auto& c : cases) EXPECT_TRUE(IsGoldenPage(c.Golden, Post(c.Query, c.Posted).Body));
  configure_ = [](Orlune& page) { page.NoMessaging(true); };
  EXPECT_EQ(Get("p=e").Body.find("sendform"), std::string::npos);
}

TEST_F(EventPage, RequiresTheRightToChangeTheCalendar) {
  AddEvent("ben", "open", "Type, BeginDate, Private", "'none', '3/15/2004', no");
  for (const char* owner : {"ben", "anna", "staff"})
    AddEvent(owner, "private", "Type, BeginDate, Private", "'none', '3/15/2004', yes");
  const auto [bens, secret, own, staff] = std::array<std::string, 4>{"1", "2", "3", "4"};
  const auto isRefused = [](const Answer& answer) {
    return answer.Body.find("<H1>ERROR</H1><P>You don't have rights for this.<P>") != std::string::npos;
  };
  const auto before = Stored();
  EXPECT_FALSE(isRefused(Get("p=e&id=" + bens)));
  EXPECT_TRUE(isRefused(Get("p=e&id=" + secret)));
  EXPECT_TRUE(isRefused(Post("p=e", Form({{"id", secret}}))));
  EXPECT_TRUE(isRefused(Get("p=e&act=delete&id=" + bens)));
  EXPECT_TRUE(isRefused(Post("p=e&act=delete&ret=results", {{"id", own + ", " + staff}})));
  for (const char* action : {"p=e&act=save", "p=e&act=send"}) {
    EXPECT_TRUE(isRefused(Post(action, Form({{"id", bens}, {"title", ""}})))) << action;
    EXPECT_TRUE(isRefused(Post(action, Form({{"id", staff}})))) << action;
    for (const char* owner : {"ben", "staff", "nobody"}) {
      EXPECT_TRUE(isRefused(Post(action, Form({{"calendar", owner}})))) << action << owner;
      EXPECT_TRUE(isRefused(Post(action, Form({{"id", own}, {"calendar", owner}})))) << action << owner;
    }
  }
  configure_ = [](Orlune& page) { page.LoginName(""); };
  Get("p=l");
  EXPECT_TRUE(isRefused(Post("p=e&act=save", Form({{"calendar", ""}}))));
  EXPECT_TRUE(isRefused(Get("p=e&id=" + own)));
  EXPECT_TRUE(isRefused(Get("p=e&act=accepted&id=" + bens)));
  EXPECT_EQ(Stored(), before);
}

TEST_F(EventPage, ReportsThatAnEventIsGone) {
  const std::string gone = "<P>The event you requested has been deleted from the database.<P>";
  for (const char* query : {"p=e&id=9", "p=e&id=x", "p=e&id=1, 2", "p=e&id=-1", "p=e&id=99999999999999999999",
                            "p=e&act=delete&id=9", "p=e&act=delete&id=1) OR (1=1", "p=e&act=accepted&id=9",
                            "p=e&act=declined", "p=e&act=notify&id=9"})
    EXPECT_NE(Get(query).Body.find(gone), std::string::npos) << query;
  EXPECT_NE(Post("p=e&act=save", Form({{"id", "9"}})).Body.find(gone), std::string::npos);
  EXPECT_EQ(Post("p=e&act=delete", {{"id", "9"}}).RedirectedTo, "/cal.asp");
  EXPECT_NE(Get("p=e&cd=x").Body.find("<P>x is not a valid date.<BR><P>"), std::string::npos);
  EXPECT_EQ(Stored(), Rows{});
}

TEST_F(EventPage, DeletesTheRequestedEvents) {
  for (const char* name : {"a", "b", "c"}) AddEvent("anna", name, "Type, BeginDate", "'none', '3/15/2004'");
  EXPECT_EQ(Post("p=e&act=delete", {{"id", "2"}}).RedirectedTo, "/cal.asp");
  EXPECT_EQ(Post("p=e&act=delete", {{"title", "nothing"}}).RedirectedTo, "/cal.asp");
  EXPECT_EQ(ReadRows(Statement("SELECT EventName FROM Events ORDER BY EventID"), {"EventName"}),
            (Rows{"a", "c"}));
}

}  // namespace
}  // namespace orlune::testing
