#include "support/calendar_fixture.h"
#include "support/page_text.h"

namespace orlune::testing {
namespace {

class EventPage : public CalendarFixture {
 protected:
  EventPage() {
    Run(Statement("INSERT INTO EventTypes (TypeName, FileName) VALUES ('Meeting', 'type_meeting.gif')"));
    LogIn("anna", "secret");
  }

  /// A complete form for a single event, with `changes`.
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

std::string Option(std::string_view value, std::string_view label, bool isSelected = false) {
  return "<OPTION VALUE=\"" + std::string(value) + "\"" + (isSelected ? " SELECTED>" : ">") +
         std::string(label);
}

/// What stands in the row of the field or fields labelled `label`.
std::string RowOf(const std::string& page, std::string_view label) {
  const std::size_t at = page.find(">" + std::string(label) + "</");
  return at == std::string::npos ? "" : Cut(page.substr(at), "<TD", "</TD></TR>");
}

std::string ButtonsOf(const std::string& page) {
  return Cut(page, "<TR><TD ALIGN=CENTER CLASS=\"captions\"><INPUT", "</TD>");
}

TEST_F(EventPage, StoresExactlyTheColumnsOfItsKind) {
  const FakeHost::Fields everything{
      {"title", "it's \"so\" <B>"}, {"addinfo", "*yes\r\n'😀'"}, {"time1", "09:00"},
      {"time2", "10:15"},           {"private", "on"},          {"type", "Meeting"},
      {"repweekday", "2, 4"},       {"frequency", "vko_2"},     {"repday", "1, 31"},
      {"repweekends", "vkl_pe"}};
  const std::string common = "|yes|2004-03-15|09:00|10:15|*yes\r\n&#39;😀&#39;|Meeting|";
  const struct {
    const char* Kind;
    const char* Rest;
  } cases[] = {{"none", "Null|Null|Null|Null|Null"},
               {"day", "2004-04-15|Null|Null|Null|Null"},
               {"weekday", "2004-04-15|2, 4|vko_2|Null|Null"},
               {"month", "2004-04-15|Null|Null|1, 31|vkl_pe"},
               {"year", "2004-04-15|Null|Null|1, 31|vkl_pe"}};
  for (const auto& c : cases) {
    EXPECT_EQ(Post("p=e&act=save", Kind(c.Kind, everything)).RedirectedTo, "/cal.asp") << c.Kind;
    EXPECT_EQ(Stored().back(),
              std::string("Null|Null|it&#39;s &quot;so&quot; <B>|anna|") + c.Kind + common + c.Rest);
  }
}

TEST_F(EventPage, KeepsTheColumnsOfOtherKindsWhenItChanges) {
  Post("p=e&act=save", Kind("weekday", {{"repweekday", "2"}, {"frequency", "kk_1"}, {"time1", "09:00"}}));
  Run(Statement("UPDATE Events SET SuggID = '77' WHERE EventID = 1"));
  Post("p=e&act=save",
       Kind("month", {{"id", "1"}, {"repday", "5"}, {"calendar", "sales"}, {"suggstate", "accepted"}}));
  EXPECT_EQ(Stored(),
            Rows{"77|accepted|Lunch|sales|month|no|2004-03-15|Null|Null|Null|Null|2004-04-15|2|kk_1|5|"
                 "vkl_ok"});
}

TEST_F(EventPage, SaysEverythingThatIsWrongAtOnce) {
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
      {Form({{"date1", "15 March"}, {"date2", "x"}}), e812},
      {Kind("day", {{"date1", "x"}, {"date2", "y"}}), e812},
      {Kind("day", {{"date2", "4/31/2004"}}), e813},
      {Kind("day", {{"date2", "3/15/2004"}}), e814},
      {Kind("year", {{"date2", "3/14/2004"}}), e814},
      {Form({{"time2", "10:00"}}), e815},
      {Form({{"time1", "25:00"}}), e815},
      {Form({{"time1", "10:00"}, {"time2", "10:00"}}), e816},
      {Form({{"time1", "10:00"}, {"time2", "09:59"}}), e816},
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

TEST_F(EventPage, KeepsWhatWasTyped) {
  const std::string page = Post("p=e", Kind("month", {{"title", "\"a\" </TITLE>&lt;"},
                                                      {"date1", "soon"},
                                                      {"time1", "14:30"},
                                                      {"addinfo", "\r\n</TEXTAREA> & \"b\""},
                                                      {"repday", "1, 31"},
                                                      {"repweekends", "vkl_ma"},
                                                      {"type", "Meeting"},
                                                      {"private", "on"},
                                                      {"calendar", "sales"},
                                                      {"repweekday", "3"},
                                                      {"frequency", "vko_2"}}))
                               .Body;
  EXPECT_EQ(AlertOf(page), "");
  EXPECT_EQ(RowOf(page, "Event Title:"),
            "<TD><INPUT TYPE=text NAME=\"title\" ID=\"title\" VALUE=\"&quot;a&quot; </TITLE>&amp;lt;\" "
            "SIZE=18></TD></TR>");
  EXPECT_EQ(RowOf(page, "Comments:"),
            "<TD><TEXTAREA NAME=\"addinfo\" ID=\"addinfo\" COLS=35 ROWS=9>\r\n\r\n&lt;/TEXTAREA> & "
            "\"b\"</TEXTAREA></TD></TR>");
  EXPECT_NE(RowOf(page, "Date:")
                .find("VALUE=\"soon\" SIZE=18> <A HREF=\"javascript:void(0);\" NAME=\"pick1\" "
                      "onClick=\"javascript:window.open('/cal.asp?p=s&sd='+document.acForm.date1"
                      ".value, 'win1', 'width=180,height=180,left='+(event.screenX - 175)+',top='"
                      "+(event.screenY + 20));\""),
            std::string::npos);
  EXPECT_NE(RowOf(page, "Date:").find("<OPTION SELECTED>14:30\r\n"), std::string::npos);
  EXPECT_NE(RowOf(page, "End Date:").find("NAME=\"date2\" ID=\"date2\" VALUE=\"4/15/2004\""),
            std::string::npos);
  EXPECT_NE(RowOf(page, "Day(s):").find(Option("1", "1.", true) + "\r\n" + Option("2", "2.") + "\r\n"),
            std::string::npos);
  EXPECT_NE(RowOf(page, "Day(s):").find(Option("31", "31.", true) + "\r\n</SELECT>"), std::string::npos);
  EXPECT_NE(RowOf(page, "Weekends:").find("VALUE=\"vkl_ma\" CHECKED>Move forward"), std::string::npos);
  EXPECT_NE(RowOf(page, "Event Type:").find("VALUE=\"Meeting\" CHECKED><IMG SRC=\"images/type_meeting.gif\""),
            std::string::npos);
  EXPECT_EQ(RowOf(page, "Calendar:"),
            "<TD><SELECT NAME=\"calendar\" ID=\"calendar\">" + Option("anna", "Anna A") +
                Option("sales", "Sales", true) +
                "</SELECT> <LABEL><INPUT TYPE=checkbox NAME=\"private\" CHECKED>Private</LABEL>"
                "<INPUT TYPE=hidden NAME=\"id\" VALUE=\"\"><INPUT TYPE=hidden NAME=\"suggstate\" VALUE=\"\">"
                "<INPUT TYPE=hidden NAME=\"repweekday\" VALUE=\"3\"><INPUT TYPE=hidden NAME=\"frequency\" "
                "VALUE=\"vko_2\"></TD></TR>");
}

TEST_F(EventPage, OffersTheRowsAndButtonsOfItsKind) {
  const auto labels = [](const std::string& page) {
    std::string found;
    for (const char* label :
         {"Event Title:", "Repeat:", "Date:", "End Date:", "Event Type:", "Comments:", "Weekday(s):",
          "Frequency:", "Day(s):", "Weekends:", "Recipient(s):", "Status:", "Calendar:"}) {
      const std::size_t at = page.find(">" + std::string(label) + "</");
      if (at != std::string::npos) found += std::string(label) + " ";
    }
    return found;
  };
  const auto button = [](const char* text, const char* action) {
    return std::string("<INPUT TYPE=button VALUE=\"") + text +
           "\" onClick=\"javascript:document.acForm.action='/cal.asp?p=e&act=" + action +
           "';document.acForm.submit();\">";
  };
  const std::string cell = "<TR><TD ALIGN=CENTER CLASS=\"captions\">";
  const std::string fresh = Get("p=e&cd=3/20/2004").Body;
  EXPECT_EQ(labels(fresh), "Event Title: Repeat: Date: Event Type: Comments: Calendar: ");
  EXPECT_NE(fresh.find("VALUE=\"3/20/2004\""), std::string::npos);
  EXPECT_EQ(ButtonsOf(fresh),
            cell + button("Save", "save") + "&nbsp;&nbsp;" + button("Send", "sendform") + "</TD>");
  EXPECT_EQ(labels(Post("p=e", Kind("day")).Body),
            "Event Title: Repeat: Date: End Date: Event Type: Comments: Calendar: ");
  EXPECT_EQ(labels(Post("p=e", Kind("year")).Body),
            "Event Title: Repeat: Date: End Date: Event Type: Comments: Weekends: Calendar: ");
  const std::string weekday =
      Post("p=e", Kind("weekday", {{"repweekday", "1, 3"}, {"frequency", "kk_4"}})).Body;
  EXPECT_EQ(labels(weekday),
            "Event Title: Repeat: Date: End Date: Event Type: Comments: Weekday(s): Frequency: "
            "Calendar: ");
  EXPECT_NE(RowOf(weekday, "Weekday(s):").find(Option("2", "Monday") + "\r\n" + Option("3", "Tuesday", true)),
            std::string::npos);
  EXPECT_NE(RowOf(weekday, "Weekday(s):").find(Option("1", "Sunday", true) + "\r\n</SELECT>"),
            std::string::npos);
  EXPECT_NE(RowOf(weekday, "Frequency:").find(Option("kk_4", "4th in month", true) + "\r\n</SELECT>"),
            std::string::npos);

  const int id = AddEvent("anna", "a", "Type, BeginDate", "'none', '3/15/2004'");
  const std::string stored = Get("p=e&id=" + std::to_string(id)).Body;
  EXPECT_EQ(ButtonsOf(stored),
            cell + button("Save", "save") + "&nbsp;&nbsp;" + button("Delete", "delete") + "</TD>");
  EXPECT_NE(stored.find("NAME=\"id\" VALUE=\"1\""), std::string::npos);
  configure_ = [](Orlune& page) { page.NoMessaging(true); };
  EXPECT_EQ(ButtonsOf(Get("p=e").Body), cell + button("Save", "save") + "</TD>");
}

TEST_F(EventPage, RefusesWhoHasNoRight) {
  const int bens = AddEvent("ben", "b", "Type, BeginDate, Private", "'none', '3/15/2004', no");
  const int secret = AddEvent("ben", "secret", "Type, BeginDate, Private", "'none', '3/15/2004', yes");
  const int own = AddEvent("anna", "a", "Type, BeginDate, Private", "'none', '3/15/2004', yes");
  const int staff = AddEvent("staff", "s", "Type, BeginDate, Private", "'none', '3/15/2004', no");
  const auto isRefused = [](const Answer& answer) {
    return answer.Body.find("<H1>ERROR</H1><P>You don't have rights for this.<P>") != std::string::npos;
  };
  const auto before = Stored();
  const auto text = [](int id) { return std::to_string(id); };
  EXPECT_FALSE(isRefused(Get("p=e&id=" + text(bens))));
  EXPECT_TRUE(isRefused(Get("p=e&id=" + text(secret))));
  EXPECT_TRUE(isRefused(Post("p=e", Form({{"id", text(secret)}}))));
  EXPECT_TRUE(isRefused(Get("p=e&act=delete&id=" + text(bens))));
  EXPECT_TRUE(isRefused(Post("p=e&act=delete&ret=results", {{"id", text(own) + ", " + text(bens)}})));
  for (const char* action : {"p=e&act=save", "p=e&act=send"}) {
    EXPECT_TRUE(isRefused(Post(action, Form({{"id", text(bens)}, {"title", ""}})))) << action;
    EXPECT_TRUE(isRefused(Post(action, Form({{"id", text(staff)}})))) << action;
    for (const char* owner : {"ben", "staff", "nobody"}) {
      EXPECT_TRUE(isRefused(Post(action, Form({{"calendar", owner}})))) << action << owner;
      EXPECT_TRUE(isRefused(Post(action, Form({{"id", text(own)}, {"calendar", owner}})))) << action << owner;
    }
  }
  configure_ = [](Orlune& page) { page.LoginName(""); };
  Get("p=l");
  EXPECT_TRUE(isRefused(Post("p=e&act=save", Form({{"calendar", ""}}))));
  EXPECT_TRUE(isRefused(Get("p=e&id=" + text(own))));
  EXPECT_TRUE(isRefused(Get("p=e&act=accepted&id=" + text(bens))));
  EXPECT_EQ(Stored(), before);
}

TEST_F(EventPage, SaysThatAnEventIsGone) {
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

TEST_F(EventPage, DeletesWhatWasAskedFor) {
  for (const char* name : {"a", "b", "c"}) AddEvent("anna", name, "Type, BeginDate", "'none', '3/15/2004'");
  EXPECT_EQ(Post("p=e&act=delete", {{"id", "2"}}).RedirectedTo, "/cal.asp");
  EXPECT_EQ(Post("p=e&act=delete", {{"title", "nothing"}}).RedirectedTo, "/cal.asp");
  EXPECT_EQ(ReadRows(Statement("SELECT EventName FROM Events ORDER BY EventID"), {"EventName"}),
            (Rows{"a", "c"}));
}

}  // namespace
}  // namespace orlune::testing
