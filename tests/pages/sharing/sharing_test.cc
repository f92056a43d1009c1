#include "base/lists.h"
#include "drivers/passwords/sodium_secrets.h"
#include "exchange/calendar_text.h"
#include "support/calendar_fixture.h"
#include "support/golden_page.h"
#include "support/page_text.h"

namespace orlune::testing {
namespace {

using std::chrono::year;

/// Texts in which each line is the title of an event on 20 March 2004, which is its UID as well; "-" is a
/// component that cannot be taken.
class LinesAsEvents : public CalendarText {
 public:
  std::string ObjectText(const CalendarObject& object, const Week& /*week*/) const override {
    return object.Events.front().Event.EventName;
  }
  std::string FileBegin(std::string_view name) const override { return "[" + std::string(name) + "]\r\n"; }
  std::string FileEntry(const CalendarObject& object, const Week& week) const override {
    return ObjectText(object, week) + "\r\n";
  }
  std::string FileEnd() const override { return "[end]"; }
  PlannedObject ReadObject(std::string_view text, const ReadingSettings& /*settings*/) const override {
    OL_Event event;
    event.EventName = text;
    event.Type = Repetition::kMonthly;
    event.RepeatDay = "3, 20";
    event.RepeatWeekends = WeekendRule::kMoveBack;
    event.BeginDate = year{2004} / 3 / 20;
    event.EndDate = year{2004} / 5 / 20;
    return {std::string(text), std::string(text), {{event}}, {}, {Loss::kAlarms, Loss::kLocation}};
  }
  PlannedFile ReadFile(std::string_view text, const ReadingSettings& settings) const override {
    if (text.starts_with("PK")) throw InvalidCalendarText(TextFault::kInvalidText, "It's no calendar.");
    PlannedFile file;
    for (; !text.empty(); text.remove_prefix(std::min(text.size(), text.find("\r\n") + 2))) {
      const std::string_view line = text.substr(0, text.find("\r\n"));
      if (line.starts_with('-'))
        file.Refused.push_back({std::string(line), "A task & no event."});
      else
        file.Objects.push_back(ReadObject(line, settings));
    }
    return file;
  }
  std::string Expanded(std::string_view /*text*/, const UtcPeriod& /*period*/) const override { return {}; }
  bool Matches(std::string_view /*text*/, std::span<const PropertyFilter> /*filters*/) const override {
    return false;
  }
  std::string FreeBusyText(const UtcPeriod& /*period*/, std::span<const BusyPeriod> /*busy*/) const override {
    return {};
  }
  DateTime LocalTime(std::chrono::sys_seconds moment) const override {
    const Date day = std::chrono::floor<std::chrono::days>(moment);
    return {day, std::chrono::duration_cast<TimeOfDay>(moment - day)};
  }
  std::chrono::sys_seconds Moment(const DateTime& local) const override {
    return std::chrono::time_point_cast<std::chrono::seconds>(local.Day + local.Time);
  }
  std::string_view ZoneName() const override { return "Etc/UTC"; }
};

class SharingPage : public CalendarFixture {
 protected:
  SharingPage() {
    surroundings_.CalendarTexts = &texts_;
    surroundings_.Secrets = &secrets_;
    configure_ = [](Orlune& page) { page.Sharing(true); };
    LogIn("anna", "secret");
    host_.PathInfo = "/sharing";
  }

  void VisitAs(const std::string& name) {
    host_.PathInfo = "";
    LogIn(name, name == "admin" ? "demo1" : "secret");
    host_.PathInfo = "/sharing";
  }
  /// What stands in `body` as a new secret, or address with one; "" when nothing does.
  static std::string NewSecret(const std::string& body) {
    const std::string note = Cut(body, "CLASS=\"made\"", "</DIV>");
    const std::string last = note.substr(std::min(note.size(), note.rfind("<SPAN CLASS=\"secret\">")));
    return last.empty() ? "" : last.substr(21, last.find("</SPAN>") - 21);
  }
  std::string KeyRow(const std::string& body, const std::string& name) {
    return Cut(body, "<TR><TD>" + name + "</TD>", "</TR>");
  }
  std::string IdOf(const std::string& row) {
    const std::string field = Cut(row, "NAME=\"key\" VALUE=\"", "\">");
    return field.substr(18, field.size() - 20);
  }

  LinesAsEvents texts_;
  SodiumSecrets secrets_;
};

TEST_F(SharingPage, IsForUsersOfAPageThatShares) {
  EXPECT_TRUE(IsGoldenPage("sharing/sharing", Get().Body));
  EXPECT_TRUE(host_.LastAnswer().IsUncached);
  host_.PathInfo = "";
  EXPECT_NE(Get("p=p").Body.find("<A HREF=\"/cal.asp/sharing\""), std::string::npos);
  host_.PathInfo = "/sharing";
  host_.IsOverHttps = false;
  EXPECT_NE(Get().Body.find("Devices can log in over HTTPS only."), std::string::npos);
  host_.SessionValues.clear();
  EXPECT_EQ(Get().RedirectedTo, "/cal.asp");
  EXPECT_EQ(Post("act=mkpw", {{"device", "x"}}).RedirectedTo, "/cal.asp");
  VisitAs("anna");
  configure_ = [](Orlune&) {};
  EXPECT_EQ(Get().Status, 404U);
  EXPECT_EQ(host_.LastAnswer().Body, "");
}

TEST_F(SharingPage, ShowsANewSecretOnceAndStoresNoneOfIt) {
  const FakeHost::Fields password{{"device", " Anna's <I>phone</I> & &lt;\"co\" "}};
  const std::string shown = "Anna's &lt;I>phone&lt;/I> & &amp;lt;\"co\"";
  const std::string secret = NewSecret(Post("act=mkpw", password).Body);
  EXPECT_EQ(secret.size(), 26U);
  EXPECT_NE(host_.LastAnswer().Body.find("App password of “" + shown + "”"), std::string::npos);
  EXPECT_EQ(Read(Statement("SELECT Digest FROM AppPasswords WHERE Digest = '{}'", secret)), "(none)");
  EXPECT_NE(Get().Body.find(shown), std::string::npos);
  EXPECT_EQ(Get().Body.find(secret), std::string::npos);

  EXPECT_EQ(NewSecret(Post("act=mkpw", password).Body), "");  // the page is reloaded
  EXPECT_NE(AlertOf(host_.LastAnswer().Body).find("is already in use."), std::string::npos);
  EXPECT_EQ(std::to_string(ReadRows(Statement("SELECT * FROM AppPasswords"), {}).size()), "1");

  const std::string address =
      NewSecret(Post("act=mklink", {{"calendar", "SALES"}, {"link", "Nordvik"}}).Body);
  EXPECT_TRUE(address.starts_with("https://calendar.example/cal.asp/feed/")) << address;
  EXPECT_NE(host_.LastAnswer().Body.find("HREF=\"webcal://" + address.substr(8)), std::string::npos);
  EXPECT_NE(KeyRow(Get().Body, "Nordvik").find(">[Sales]<"), std::string::npos);
}

TEST_F(SharingPage, RefusesKeysThatAreNotNamedWell) {
  const std::string longName(101, 'x');
  for (const auto& [act, name, alert] :
       {std::tuple{"act=mkpw", " ", "Name field is empty.\\n"},
        {"act=mkpw", longName.c_str(), "Name is too long (at most 100 characters).\\n"},
        {"act=mklink", "", "Name field is empty.\\n"}}) {
    EXPECT_EQ(AlertOf(Post(act, {{"device", name}, {"link", name}, {"calendar", "anna"}}).Body), alert);
  }
  EXPECT_EQ(std::to_string(ReadRows(Statement("SELECT * FROM AppPasswords"), {}).size()), "0");
  for (const char* calendar : {"ben", "", "@nothing"}) {
    const Answer& answer = Post("act=mklink", {{"calendar", calendar}, {"link", "x"}});
    EXPECT_NE(answer.Body.find("You don't have rights for this."), std::string::npos) << calendar;
  }
  EXPECT_EQ(std::to_string(ReadRows(Statement("SELECT * FROM SecretLinks"), {}).size()), "0");
}

TEST_F(SharingPage, RevokesOnlyTheUsersOwnKeys) {
  Post("act=mkpw", {{"device", "Phone"}});
  Post("act=mklink", {{"calendar", "anna"}, {"link", "Team"}});
  const std::string password = IdOf(KeyRow(Get().Body, "Phone"));
  const std::string link = IdOf(KeyRow(Get().Body, "Team"));
  const auto revokeBoth = [&] {
    EXPECT_EQ(Post("act=rmpw", {{"key", password}}).RedirectedTo, "/cal.asp/sharing");
    Post("act=rmlink", {{"key", link}});
    return std::to_string(ReadRows(Statement("SELECT * FROM AppPasswords"), {}).size()) +
           std::to_string(ReadRows(Statement("SELECT * FROM SecretLinks"), {}).size());
  };
  VisitAs("admin");
  EXPECT_EQ(revokeBoth(), "11");
  VisitAs("anna");
  EXPECT_EQ(revokeBoth(), "00");
}

TEST_F(SharingPage, MakesNoKeysForAnAccountThatEverybodyUses) {
  const std::function<void(Orlune&)> cases[] = {[](Orlune& page) { page.LoginName("Anna"); },
                                                [](Orlune& page) { page.DemoMode(true); }};
  for (const auto& set : cases) {
    configure_ = [&](Orlune& page) {
      page.Sharing(true);
      set(page);
    };
    EXPECT_NE(Get().Body.find("Everybody uses this account"), std::string::npos);
    EXPECT_NE(Post("act=mkpw", {{"device", "x"}}).Body.find("rights for this."), std::string::npos);
    VisitAs("admin");
  }
  EXPECT_EQ(std::to_string(ReadRows(Statement("SELECT * FROM AppPasswords"), {}).size()), "0");
}

TEST_F(SharingPage, ImportsWhatItsPreviewShows) {
  const FakeHost::Fields file{{"calendar", "sales"}, {"file", "Budget\nA </TEXTAREA>&amp;<B>\r-Buy ink\r\n"}};
  const std::string preview = Post("act=preview", file).Body;
  EXPECT_NE(preview.find("<B>2 new, 0 changed, 0 unchanged, 1 refused</B>"), std::string::npos);
  EXPECT_EQ(KeyRow(preview, "Budget"),
            "<TR><TD>Budget</TD><TD DATA-LABEL=\"First day\">3/20/2004</TD>"
            "<TD DATA-LABEL=\"Repeat\">Monthly: 3., 20.; Move back</TD><TD DATA-LABEL=\"Result\">new</TD>"
            "<TD DATA-LABEL=\"Kept, but not shown here\">alarms, location</TD></TR>");
  EXPECT_NE(preview.find("<B>refused</B>: A task & no event."), std::string::npos);
  EXPECT_NE(
      preview.find("<TEXTAREA NAME=\"text\" HIDDEN>Budget\r\nA &lt;/TEXTAREA>&amp;amp;&lt;B>\r\n-Buy ink"),
      std::string::npos);
  EXPECT_EQ(std::to_string(ReadRows(Statement("SELECT * FROM Events"), {}).size()), "0");

  const FakeHost::Fields posted{{"calendar", "sales"},
                                {"text", "Budget\r\nA </TEXTAREA>&amp;<B>\r\n-Buy ink\r\n"}};
  EXPECT_EQ(Post("act=import", posted).RedirectedTo, "/cal.asp/sharing?new=2&changed=0&unchanged=0");
  EXPECT_NE(Get("new=2&changed=0&unchanged=0").Body.find("Imported: 2 new,"), std::string::npos);
  EXPECT_EQ(
      ReadRows(Statement("SELECT EventName, Owner FROM Events ORDER BY EventID"), {"EventName", "Owner"}),
      (std::vector<std::string>{"Budget|sales", "A </TEXTAREA>&amp;<B>|sales"}));
  EXPECT_EQ(Post("act=preview", file).Body.find("<TEXTAREA"), std::string::npos);
  EXPECT_EQ(Post("act=import", posted).RedirectedTo, "/cal.asp/sharing?new=0&changed=0&unchanged=2");
}

TEST_F(SharingPage, RefusesFilesAndCalendarsThatItCannotImport) {
  for (const auto& [file, alert] :
       {std::pair{std::string(), "No file has been chosen.\\n"},
        {std::string((10U << 20U) + 1, 'x'), "The file is too large (at most 10 MB).\\n"},
        {std::string("PK\x03\x04"), "The file cannot be imported: It\\'s no calendar.\\n"}}) {
    EXPECT_EQ(AlertOf(Post("act=preview", {{"calendar", "anna"}, {"file", file}}).Body), alert);
  }
  for (const char* calendar : {"staff", "ben", "admin", "@x", ""}) {
    for (const char* act : {"act=preview", "act=import"}) {
      const Answer& answer = Post(act, {{"calendar", calendar}, {"file", "Budget"}, {"text", "Budget"}});
      EXPECT_NE(answer.Body.find("You don't have rights for this."), std::string::npos) << calendar;
    }
  }
  EXPECT_EQ(std::to_string(ReadRows(Statement("SELECT * FROM Events"), {}).size()), "0");
}

TEST_F(SharingPage, ExportsAPeriodAsAFile) {
  const auto add = [&](std::string_view name, SqlLiteral day) {
    AddEvent("sales", name, "Type, BeginDate, Private", day);
  };
  add("First", "'none', '3/1/2004', no");
  add("Second", "'none', '3/2/2004', no");
  const Answer& all = Get("act=export&calendar=sales&date1=&date2=");
  EXPECT_EQ(all.Body, "[Sales]\r\nFirst\r\nSecond\r\n[end]");
  EXPECT_EQ(all.ContentType, "text/calendar; charset=utf-8");
  EXPECT_EQ(all.DownloadedAs, "sales.ics");
  EXPECT_EQ(Get("act=export&calendar=sales&date1=3/2/2004").Body, "[Sales]\r\nSecond\r\n[end]");
  EXPECT_EQ(Get("act=export&calendar=sales&date2=2004-03-01").Body, "[Sales]\r\nFirst\r\n[end]");
  for (const auto& [days, alert] :
       {std::pair{"date1=soon&date2=later",
                  "The start date is not a valid date.\\nThe end date is not a valid date.\\n"},
        {"date1=3/2/2004&date2=3/1/2004", "The start date must be earlier than the end date.\\n"}}) {
    EXPECT_EQ(AlertOf(Get("act=export&calendar=sales&" + std::string(days)).Body), alert);
  }
  EXPECT_NE(Get("act=export&calendar=ben").Body.find("You don't have rights for this."), std::string::npos);
}

}  // namespace
}  // namespace orlune::testing
