#include "support/calendar_fixture.h"
#include "support/page_text.h"

namespace orlune::testing {
namespace {

class Suggestions : public CalendarFixture {
 protected:
  Suggestions() { LogIn("anna", "secret"); }

  static FakeHost::Fields Form(std::string_view recipients) {
    return {{"title", "it's"},
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

TEST_F(Suggestions, AreCopiedToEachRecipientAndTold) {
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
  for (const auto& [name, value] : FakeHost::Fields{
           {"reptype", "day"}, {"date2", "3/22/2004"}, {"time1", "- - - -"}, {"time2", "- - - -"}})
    repeating[name] = value;
  Post("p=e&act=send", repeating);
  EXPECT_NE(
      Messages("Content", {"Content"})[2].find("Date: <B>3/20/2004-3/22/2004</B><BR>Time: <B>&nbsp;</B>"),
      std::string::npos);
}

TEST_F(Suggestions, NeedSomebodyToGoTo) {
  for (const char* nobody : {"", "nobody"}) {
    const std::string page = Post("p=e&act=send", Form(nobody)).Body;
    EXPECT_EQ(AlertOf(page), "No recipients have been selected.\\n");
    EXPECT_NE(page.find("act=send'"), std::string::npos);
    EXPECT_EQ(page.find("act=save"), std::string::npos);
  }
  FakeHost::Fields untitled = Form("ben, sales");
  untitled["title"] = "";
  const std::string page = Post("p=e&act=send", untitled).Body;
  EXPECT_EQ(AlertOf(page), "The event title field is empty.\\n");
  EXPECT_EQ(
      Cut(page, "<SELECT NAME=\"vastaanottaja\"", "</TD>"),
      "<SELECT NAME=\"vastaanottaja\" ID=\"vastaanottaja\" SIZE=8 MULTIPLE>\r\n"
      "<OPTION VALUE=\"admin\">Administrator\r\n<OPTION VALUE=\"ben\" SELECTED>Ben B\r\n"
      "<OPTION VALUE=\"default\">[Everybody]\r\n<OPTION VALUE=\"sales\" SELECTED>[Sales]\r\n"
      "<OPTION VALUE=\"staff\">[Staff]\r\n</SELECT><BR>[Use ctrl to select<BR>multiple recipients]</TD>");
  EXPECT_EQ(Copies(), Rows{});

  Post("p=e&act=send", Form("anna, sales"));
  EXPECT_EQ(Copies(), Rows{"1|anna|Null|-|it&#39;s"});
  EXPECT_EQ(Messages("Sender", {"Sender"}), Rows{});
}

TEST_F(Suggestions, KeepEachRecipientsLatestAnswer) {
  Post("p=e&act=send", Form("ben, admin"));
  LogIn("ben", "");
  const std::string page = Get("p=e&act=accepted&id=1").Body;
  EXPECT_NE(page.find("CLASS=\"background\">\r\n<FORM METHOD=post ACTION=\"/cal.asp?p=e&act=notify&id=1\" "
                      "NAME=\"acForm\">"),
            std::string::npos);
  EXPECT_NE(
      page.find(
          "You have accepted a suggested event. <BR>A message saying so will now be sent to the sender "
          "of the event. <BR>If you would like to include any comments, please type them below and press "
          "the Send Message button."),
      std::string::npos);
  EXPECT_NE(page.find("<TEXTAREA NAME=\"addinfo\" ID=\"addinfo\" COLS=50 ROWS=10></TEXTAREA>"
                      "<INPUT TYPE=hidden NAME=\"suggstate\" VALUE=\"accepted\">"),
            std::string::npos);
  EXPECT_NE(page.find("<INPUT TYPE=submit NAME=\"notify\" VALUE=\"Send Message\">"), std::string::npos);
  EXPECT_EQ(Copies()[1], "2|ben|1|accepted|it&#39;s");
  Get("p=e&act=declined&id=1");
  EXPECT_EQ(Copies(),
            (Rows{"1|anna|Null|-|it&#39;s", "2|ben|1|declined|it&#39;s", "3|admin|1|undecided|it&#39;s"}));

  LogIn("anna", "secret");
  EXPECT_EQ(
      Cut(Get("p=e&id=1").Body, "ARIA-LABEL=\"Status:\">", "</TD>"),
      "ARIA-LABEL=\"Status:\">Ben B:&nbsp&nbsp<I>declined</I><BR>Administrator:&nbsp&nbspundecided<BR></TD>");
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
