#include "pages/messages/message_sending.h"
#include "support/calendar_fixture.h"
#include "support/page_text.h"

namespace orlune::testing {
namespace {

const std::string kMessageButtons =
    Button("p=c", "View Calendar", "cal.gif") + Button("p=m", "Message List", "msg_list.gif");

/// The frame of a page whose buttons stand above it.
std::string BoxOpen(const std::string& width, const std::string& caption) {
  return "<TABLE ALIGN=CENTER" + width + ">\r\n<TR CLASS=\"plain\"><TD><FONT CLASS=\"caltitle\">" + caption +
         "</FONT></TD><TD ALIGN=RIGHT>&nbsp;</TD></TR>\r\n<TR><TD COLSPAN=2 CLASS=\"background\">\r\n";
}

class Messages : public CalendarFixture {
 protected:
  Messages() { LogIn("anna", "secret"); }

  int AddMessage(std::string_view recipient, std::string_view subject, std::string_view suggestion = "") {
    Run(
        Statement("INSERT INTO Messages (Sender, Recipient, SentDate, Subject, Content, Viewed, Suggestion) "
                  "VALUES ('ben', '{}', '3/12/2004 14:05:00', '{}', 'one\r\ntwo', no, '{}')",
                  recipient, subject, suggestion));
    return std::stoi(Read(Statement("SELECT TOP 1 MessageID FROM Messages ORDER BY MessageID DESC")));
  }
  std::vector<std::string> Stored() {
    return ReadRows(Statement("SELECT * FROM Messages ORDER BY MessageID"),
                    {"Sender", "Recipient", "Subject", "Content", "Viewed", "Suggestion"});
  }
  using Rows = std::vector<std::string>;
};

TEST_F(Messages, AreListedTheOldestFirst) {
  EXPECT_EQ(
      Cut(Get("p=m").Body, "<BODY>", "</TABLE></TD></TR>\r\n<TR CLASS=\"plain\">"),
      "<BODY>\r\n\r\n" + Button("p=c", "View Calendar", "cal.gif") +
          Button("p=m&act=new", "New Message", "msg_new.gif") + BoxOpen(" WIDTH=90%", "MESSAGES") +
          "<FORM METHOD=post ACTION=\"/cal.asp?p=m\" NAME=\"acForm\">"
          "<TABLE CELLSPACING=0.5 ALIGN=CENTER WIDTH=100%>"
          "<TR><TD WIDTH=95% CLASS=\"captions\"><TABLE WIDTH=100%><TR>"
          "<TD WIDTH=5% CLASS=\"captions\">&nbsp;</TD>"
          "<TD WIDTH=25% CLASS=\"captions\">Sender<TD WIDTH=45% CLASS=\"captions\">Subject"
          "<TD WIDTH=25% CLASS=\"captions\">Date</TD></TR></TABLE></TD>"
          "<TD WIDTH=5% CLASS=\"captions\">&nbsp;</TD></TR>"
          "<TR><TD ALIGN=CENTER COLSPAN=2>(No messages)</TD></TR>"
          "<TR><TD COLSPAN=5 ALIGN=CENTER CLASS=\"captions\">"
          "<INPUT TYPE=button VALUE=\"Delete Selected Messages\" onClick=\"javascript:document.acForm.action="
          "'/cal.asp?p=m&act=del';document.acForm.submit();\"></TABLE></TD></TR>\r\n<TR CLASS=\"plain\">");

  AddMessage("anna", "later");
  AddMessage("anna", "earlier");
  AddMessage("admin", "not mine");
  Run(
      Statement("UPDATE Messages SET Sender = 'gone', SentDate = '3/1/2004 00:30:00', Viewed = yes "
                "WHERE MessageID = 2"));
  const auto row = [](const char* icon, const char* sender, const char* id, const char* subject,
                      const char* date) {
    return std::string("<TR><TD><TABLE WIDTH=100%><TR><TD ALIGN=CENTER WIDTH=5%><IMG SRC=\"images/") + icon +
           "\"></TD><TD WIDTH=25%>" + sender +
           "</TD><TD WIDTH=45%><A HREF=\"/cal.asp?p=m&act=view&msg=" + id + "\" TITLE=\"View Message\" " +
           Status("View Message") + ">" + subject + "</A></TD><TD WIDTH=25%>" + date +
           "</TD></TR></TABLE></TD><TD ALIGN=CENTER CLASS=\"captions\" WIDTH=5%><INPUT TYPE=checkbox "
           "NAME=\"msg\" "
           "VALUE=\"" +
           id + "\"></TD></TR>";
  };
  const std::string page = Get("p=m").Body;
  EXPECT_EQ(Cut(page, "<TR><TD><TABLE", "<TR><TD COLSPAN=5"),
            row("msg_oldmail.gif", "gone", "2", "earlier", "3/1/2004 00:30") +
                row("msg_newmail.gif", "Ben B", "1", "later", "3/12/2004 14:05") + "<TR><TD COLSPAN=5");
}

TEST_F(Messages, CountAsReadOnceTheyWereOpened) {
  const int plain = AddMessage("anna", "<I>a</I> <SCRIPT>");
  AddMessage("anna", "b", "17");
  const std::string page = Get("p=m&act=view&msg=" + std::to_string(plain)).Body;
  const auto button = [](const char* text, const char* query) {
    return std::string("<INPUT TYPE=button VALUE=\"") + text +
           "\" onClick=\"javascript:window.location='/cal.asp?" + query + "'\">";
  };
  EXPECT_EQ(Cut(page, "<BODY>", "</TD></TR></TABLE>\r\n"),
            "<BODY>\r\n\r\n" + kMessageButtons + BoxOpen(" WIDTH=70%", "RECEIVED MESSAGE") +
                "<TABLE CELLSPACING=0.5 ALIGN=CENTER WIDTH=100%>"
                "<TR><TD WIDTH=15% CLASS=\"captions\">Sender: </TD><TD WIDTH=65%>Ben B</TD></TR>"
                "<TR><TD CLASS=\"captions\">Date: </TD><TD>3/12/2004 14:05</TD></TR>"
                "<TR><TD CLASS=\"captions\">Subject: </TD><TD><I>a</I> &lt;SCRIPT></TD></TR>"
                "<TR><TD COLSPAN=2><BR>one<BR>two<BR><BR></TD></TR><TR><TD COLSPAN=2 ALIGN=CENTER "
                "CLASS=\"captions\">" +
                button("Reply", "p=m&act=reply&msg=1") + "&nbsp;" + button("Delete", "p=m&act=del&msg=1") +
                "</TD></TR></TABLE>\r\n");
  EXPECT_NE(
      Get("p=m&act=view&msg=2")
          .Body.find(button("Accept", "p=e&act=accepted&id=17") + "&nbsp;" +
                     button("Decline", "p=e&act=declined&id=17") + button("Reply", "p=m&act=reply&msg=2")),
      std::string::npos);
  AddMessage("anna", "c");
  EXPECT_EQ(ReadRows(Statement("SELECT Viewed FROM Messages ORDER BY MessageID"), {"Viewed"}),
            (Rows{"yes", "yes", "no"}));
}

TEST_F(Messages, AreDeletedByTheirNumbersAlone) {
  for (const char* subject : {"a", "b", "c", "d"}) AddMessage("anna", subject);
  EXPECT_EQ(Post("p=m&act=del", {{"msg", "1, 3"}}).RedirectedTo, "/cal.asp?p=m");
  EXPECT_EQ(Post("p=m&act=del", {{"x", ""}}).RedirectedTo, "/cal.asp?p=m");
  EXPECT_EQ(Get("p=m&act=del&msg=4").RedirectedTo, "/cal.asp?p=m");
  EXPECT_EQ(Stored().size(), 1U);
  for (const char* msg : {"x", "2) OR (1=1", "*", "2; 3"}) {
    EXPECT_THROW(Get("p=m&act=del&msg=" + std::string(msg)), DatabaseError) << msg;
    EXPECT_THROW(Get("p=m&act=view&msg=" + std::string(msg)), DatabaseError) << msg;
  }
  EXPECT_THROW(Get("p=m&act=view&msg=99"), DatabaseError);
  EXPECT_THROW(Get("p=m&act=reply&msg=99"), DatabaseError);
  EXPECT_EQ(Stored().size(), 1U);
}

TEST_F(Messages, GoToEachMemberOnce) {
  Run(Statement("UPDATE Calendars SET MemberOfGroups = 'salesforce' WHERE Name = 'ben'"));
  const auto recipients = [&](const char* chosen) {
    Run(Statement("DELETE FROM Messages WHERE Sender = 'anna'"));
    EXPECT_EQ(
        Post("p=m&act=send", {{"Vastaanottaja", chosen}, {"Otsikko", "s"}, {"Sisalto", "c"}}).RedirectedTo,
        "/cal.asp?p=m")
        << chosen;
    return ReadRows(Statement("SELECT Recipient FROM Messages ORDER BY MessageID"), {"Recipient"});
  };
  EXPECT_EQ(recipients("ben"), Rows{"ben"});
  EXPECT_EQ(recipients("BEN, ben"), Rows{"ben"});
  EXPECT_EQ(recipients("staff, ben, anna"), (Rows{"ben", "anna"}));
  EXPECT_EQ(recipients("[sales]"), (Rows{"anna", "ben"}));
  EXPECT_EQ(recipients("default, ben"), (Rows{"ben", "admin", "anna"}));
  EXPECT_EQ(recipients("ben, nobody"), Rows{"ben"});
  Run(Statement("UPDATE Calendars SET MemberOfGroups = '' WHERE Name = 'anna'"));
  EXPECT_EQ(recipients("staff"), Rows{});
}

TEST_F(Messages, AreKeptForTheRecipientsBeforeOneThatFails) {
  place_.RunNative(place_.Kind() == Engine::kSqlite
                       ? "CREATE TRIGGER NotBen BEFORE INSERT ON Messages WHEN NEW.Recipient = 'ben' "
                         "BEGIN SELECT RAISE(ABORT, 'not ben'); END"
                       : "ALTER TABLE \"Messages\" ADD CHECK (\"Recipient\" <> 'ben')");
  EXPECT_THROW(
      Post("p=m&act=send", {{"Vastaanottaja", "anna, ben, admin"}, {"Otsikko", "s"}, {"Sisalto", "c"}}),
      DatabaseError);
  EXPECT_EQ(ReadRows(Statement("SELECT Recipient FROM Messages"), {"Recipient"}), Rows{"anna"});
}

TEST_F(Messages, AreStoredAsTheyWereWritten) {
  Post("p=m&act=send",
       {{"Vastaanottaja", "ben"}, {"Otsikko", "it's \"so\" <B>"}, {"Sisalto", "*yes 😀\r\n'"}});
  EXPECT_EQ(Stored(), Rows{"anna|ben|it&#39;s \"so\" <B>|*yes 😀\r\n&#39;|no|Null"});
  EXPECT_EQ(
      ReadRows(Statement("SELECT Sender FROM Messages WHERE SentDate = '3/15/2004 10:30:00'"), {"Sender"}),
      Rows{"anna"});
}

TEST_F(Messages, ComeBackWithWhatIsMissing) {
  EXPECT_EQ(AlertOf(Post("p=m&act=send", {{"Vastaanottaja", "nobody"}}).Body),
            "No recipient.\\nNo subject.\\nNo message.\\n");
  const std::string page =
      Post("p=m&act=send", {{"Vastaanottaja", "ben, staff"}, {"Otsikko", "\"a\""}, {"Sisalto", ""}}).Body;
  EXPECT_EQ(AlertOf(page), "No message.\\n");
  EXPECT_EQ(Cut(page, "<BODY>", "<TABLE WIDTH=100% CELLPADDING"),
            "<BODY>\r\n\r\n" + kMessageButtons + BoxOpen("", "NEW MESSAGE") +
                "<FORM method=POST action=\"/cal.asp?p=m&act=send\" NAME=\"acForm\">"
                "<TABLE CELLSPACING=0.5 ALIGN=CENTER WIDTH=100%><TR><TD><TABLE WIDTH=100% CELLPADDING");
  EXPECT_EQ(
      Cut(page, "<TABLE WIDTH=100% CELLPADDING", "</TEXTAREA>"),
      "<TABLE WIDTH=100% CELLPADDING=5><TR><TD>Recipient(s)</TD><TD ALIGN=RIGHT>Subject: "
      "<INPUT TYPE=text NAME=\"Otsikko\" VALUE=\"&quot;a&quot;\" size=18></TD></TR>"
      "<TR><TD><SELECT MULTIPLE SIZE=14 NAME=\"Vastaanottaja\"><OPTION VALUE=\"admin\">Administrator\r\n"
      "<OPTION VALUE=\"anna\">Anna A\r\n<OPTION VALUE=\"ben\" SELECTED>Ben B\r\n"
      "<OPTION VALUE=\"default\">[Everybody]\r\n<OPTION VALUE=\"sales\">[Sales]\r\n"
      "<OPTION VALUE=\"staff\" SELECTED>[Staff]\r\n</SELECT></TD>\r\n"
      "<TD ALIGN=RIGHT><TEXTAREA COLS=40 ROWS=12 WRAP=soft NAME=\"Sisalto\"></TEXTAREA>");
  EXPECT_EQ(Stored(), Rows{});
}

TEST_F(Messages, AreAnsweredToTheirSenderWithTheTextQuoted) {
  AddMessage("anna", "Re: it&#39;s");
  const std::string page = Get("p=m&act=reply&msg=1").Body;
  EXPECT_EQ(Cut(page, "<TEXTAREA", "</TEXTAREA>"),
            "<TEXTAREA COLS=40 ROWS=12 WRAP=soft NAME=\"Sisalto\">On 3/12/2004 you wrote:\r\n"
            "&gt; one\r\n&gt; two</TEXTAREA>");
  EXPECT_NE(page.find("VALUE=\"Re: Re: it&#39;s\""), std::string::npos);
  EXPECT_EQ(Cut(page, "SELECTED", "\r\n"), "SELECTED>Ben B\r\n");
}

TEST_F(Messages, AreNobodysWithoutALogin) {
  AddMessage("ben", "for ben");
  configure_ = [](Orlune& page) { page.LoginName(""); };
  Get("p=l");
  for (const char* query : {"p=m&act=view&msg=1", "p=m&act=reply&msg=1", "p=m&act=del&msg=1", "p=m&act=new"})
    EXPECT_NE(Get(query).Body.find("You don't have rights for this."), std::string::npos) << query;
  EXPECT_EQ(Read(Statement("SELECT Viewed FROM Messages")), "no");
  EXPECT_NE(Get("p=m").Body.find("(No messages)"), std::string::npos);
}

}  // namespace
}  // namespace orlune::testing
