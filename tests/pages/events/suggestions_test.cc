#include "support/calendar_fixture.h"
#include "support/golden_page.h"
#include "support/page_text.h"

namespace orlune::testing {
namespace {

class Suggestions : public CalendarFixture {
 protected:
  Suggestions() { LogIn("anna", "secret"); }

  static FakeHost::Fields Form(std::string_view recipients) {
    const FakeHost::Fields form{{"title", "it's"},
                                {"reptype", "none"},
                                {"date1", "3/20/2004"},
                                {"time1", "09:00"},
                                {"time2", "10:00"},
                                {"addinfo", "x\r\ny"},
                                {"calendar", "anna"},
                                {"id", ""},
                                {"suggstate", ""},
                                {"type", "Meeting"},
                                {"vastaanottaja", std::string(recipients)}};
    return form;
  }
  std::vector<std::string> Copies() {
    return ReadRows(Statement("SELECT * FROM Events ORDER BY EventID"),
                    {"EventID", "Owner", "SuggID", "SuggestState", "EventName"});
  }
  std::vector<std::string> Messages(SqlLiteral columns, const std::vector<std::string>& names) {
    return ReadRows(Statement("SELECT {} FROM Messages ORDER BY MessageID", columns), names);
  }
  using Rows = std::vector<std::string>;
};

TEST_F(Suggestions, AreCopiedAndSentToEachRecipient) {
  AddEvent("ben", "older", "Type, BeginDate, SuggestState", "'none', '3/15/2004', '-'");
  EXPECT_EQ(Post("p=e&act=send", Form("ben, admin, staff")).RedirectedTo, "/cal.asp");
  EXPECT_EQ(Copies(), (Rows{"1|ben|Null|-|older", "2|anna|Null|-|it&#39;s", "3|ben|2|undecided|it&#39;s",
                            "4|admin|2|undecided|it&#39;s"}));
  EXPECT_EQ(Messages("Sender, Recipient, Subject, Suggestion, Viewed",
                     {"Sender", "Recipient", "Subject", "Suggestion", "Viewed"}),
            (Rows{"anna|ben|it&#39;s|2|no", "anna|admin|it&#39;s|2|no"}));
  EXPECT_EQ(Messages("Content", {"Content"})[0],
            "<P>Please review the details below and either accept or decline this suggestion.<P>"
            "Event Title: <B>it&#39;s</B><BR>Event Type: <B>Meeting</B><BR><BR>Date: <B>3/20/2004</B><BR>"
            "Time: <B>09:00-10:00</B><BR><BR>Comments: x\r\ny");

  FakeHost::Fields repeating = Form("ben");
  repeating["reptype"] = "day";
  repeating["date2"] = "3/22/2004";
  repeating["time1"] = repeating["time2"] = "- - - -";
  Post("p=e&act=send", repeating);
  const std::string told = Messages("Content", {"Content"})[2];
  EXPECT_NE(told.find("Date: <B>3/20/2004-3/22/2004</B><BR>Time: <B>&nbsp;</B>"), std::string::npos);
}

TEST_F(Suggestions, RequireRecipients) {
  for (const char* nobody : {"", "nobody"}) {
    EXPECT_EQ(AlertOf(Post("p=e&act=send", Form(nobody)).Body), "No recipients have been selected.\\n");
  }
  FakeHost::Fields untitled = Form("ben, sales");
  untitled["title"] = "";
  EXPECT_TRUE(IsGoldenPage("events/suggestion", Post("p=e&act=send", untitled).Body));
  EXPECT_EQ(Copies(), Rows{});

  Post("p=e&act=send", Form("anna, sales"));
  EXPECT_EQ(Copies(), Rows{"1|anna|Null|-|it&#39;s"});
  EXPECT_EQ(Messages("Sender", {"Sender"}), Rows{});
}

TEST_F(Suggestions, KeepEachRecipientsLatestAnswer) {
  Post("p=e&act=send", Form("ben, admin"));
  LogIn("ben", "");
  EXPECT_TRUE(IsGoldenPage("events/note", Get("p=e&act=accepted&id=1").Body));
  EXPECT_EQ(Copies()[1], "2|ben|1|accepted|it&#39;s");
  Get("p=e&act=declined&id=1");
  EXPECT_EQ(Copies(),
            (Rows{"1|anna|Null|-|it&#39;s", "2|ben|1|declined|it&#39;s", "3|admin|1|undecided|it&#39;s"}));

  LogIn("anna", "secret");
  EXPECT_TRUE(IsGoldenPage("events/answers", Get("p=e&id=1").Body));
}

TEST_F(Suggestions, AreAnsweredWithANote) {
  Post("p=e&act=send", Form("ben"));
  LogIn("ben", "");
  EXPECT_EQ(Post("p=e&act=notify&id=1", {{"suggstate", "accepted"}, {"addinfo", "It's fine"}}).RedirectedTo,
            "/cal.asp?p=m");
  Post("p=e&act=notify&id=1", {{"suggstate", "no"}, {"addinfo", ""}});
  EXPECT_EQ(
      ReadRows(Statement("SELECT * FROM Messages WHERE Sender = 'ben' ORDER BY MessageID"),
               {"Recipient", "Subject", "Content", "Suggestion"}),
      (Rows{"anna|I have accepted event &#39;it&#39;s&#39;|It&#39;s fine|Null",
            "anna|I have declined event &#39;it&#39;s&#39;|(No further information was provided)|Null"}));
  AddEvent("admin", "secret", "Type, BeginDate, Private", "'none', '3/15/2004', yes");
  EXPECT_NE(
      Post("p=e&act=notify&id=3", {{"suggstate", "accepted"}}).Body.find("You don't have rights for this."),
      std::string::npos);
}

}  // namespace
}  // namespace orlune::testing
