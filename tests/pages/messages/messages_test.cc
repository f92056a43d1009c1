#include "support/calendar_fixture.h"
#include "support/golden_page.h"
#include "support/page_text.h"

namespace orlune::testing {
namespace {

class Messages : public CalendarFixture {
 protected:
  Messages() { LogIn("anna", "secret"); }

  void AddMessage(std::string_view recipient, std::string_view subject, std::string_view suggestion = "") {
    Run(
        Statement("INSERT INTO Messages (Sender, Recipient, SentDate, Subject, Content, Viewed, Suggestion) "
                  "VALUES ('ben', '{}', '3/12/2004 14:05:00', '{}', 'one\r\ntwo', no, '{}')",
                  recipient, subject, suggestion));
  }
  std::vector<std::string> Stored() {
    return ReadRows(Statement("SELECT * FROM Messages ORDER BY MessageID"),
                    {"Sender", "Recipient", "Subject", "Content", "Viewed", "Suggestion"});
  }
  bool IsRefused(const std::string& action) {
    return Get("p=m&act=" + action).Body.find("You don't have rights for this.") != std::string::npos;
  }
  using Rows = std::vector<std::string>;
};

TEST_F(Messages, AreListedTheOldestFirst) {
  EXPECT_NE(Get("p=m").Body.find("(No messages)"), std::string::npos);
  AddMessage("anna", "later");
  AddMessage("anna", "earlier");
  AddMessage("admin", "not mine");
  Run(
      Statement("UPDATE Messages SET Sender = 'gone', SentDate = '3/1/2004 00:30:00', Viewed = yes "
                "WHERE MessageID = 2"));
  EXPECT_TRUE(IsGoldenPage("messages/list", Get("p=m").Body));
}

TEST_F(Messages, AreMarkedAsReadWhenOpened) {
  AddMessage("anna", "<I>a</I> <SCRIPT>");
  AddMessage("anna", "b", "17");
  AddMessage("anna", "c");
  EXPECT_TRUE(IsGoldenPage("messages/message", Get("p=m&act=view&msg=1").Body));
  EXPECT_TRUE(IsGoldenPage("messages/suggestion", Get("p=m&act=view&msg=2").Body));
  EXPECT_EQ(ReadRows(Statement("SELECT Viewed FROM Messages ORDER BY MessageID"), {"Viewed"}),
            (Rows{"yes", "yes", "no"}));
}

TEST_F(Messages, AreDeletedByNumber) {
  for (const char* subject : {"a", "b", "c", "d"}) AddMessage("anna", subject);
  EXPECT_EQ(Post("p=m&act=del", {{"msg", "1, 3"}}).RedirectedTo, "/cal.asp?p=m");
  EXPECT_EQ(Post("p=m&act=del", {{"x", ""}}).RedirectedTo, "/cal.asp?p=m");
  EXPECT_EQ(Get("p=m&act=del&msg=4").RedirectedTo, "/cal.asp?p=m");
  EXPECT_EQ(Stored().size(), 1U);
  for (const char* msg : {"x", "2) OR (1=1", "*", "2; 3", "99999999999", "2 "}) {
    for (const char* action : {"del", "view", "reply"})
      EXPECT_TRUE(IsRefused(std::string(action) + "&msg=" + msg)) << action << msg;
  }
  EXPECT_TRUE(IsRefused("view") && IsRefused("reply&msg=1, 2"));
  EXPECT_TRUE(IsRefused("view&msg=99") && IsRefused("reply&msg=99"));
  EXPECT_EQ(Stored().size(), 1U);
}

TEST_F(Messages, AreTheirRecipientsAloneOnAStrictPage) {
  configure_ = [](Orlune& page) { page.Strict(true); };
  for (const char* recipient : {"ben", "ANNA", "anna"}) AddMessage(recipient, "s");
  for (const char* message : {"1", "99"}) {
    EXPECT_TRUE(IsRefused("view&msg=" + std::string(message))) << message;
    EXPECT_TRUE(IsRefused("reply&msg=" + std::string(message))) << message;
  }
  EXPECT_FALSE(IsRefused("view&msg=2") || IsRefused("reply&msg=2"));
  EXPECT_EQ(Post("p=m&act=del", {{"msg", "1, 3"}}).RedirectedTo, "/cal.asp?p=m");
  EXPECT_EQ(Stored(), (Rows{"ben|ben|s|one\r\ntwo|no|", "ben|ANNA|s|one\r\ntwo|yes|"}));
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

TEST_F(Messages, AreStoredAsTyped) {
  Post("p=m&act=send",
       {{"Vastaanottaja", "ben"}, {"Otsikko", "it's \"so\" <B>"}, {"Sisalto", "*yes 😀\r\n'"}});
  EXPECT_EQ(Stored(), Rows{"anna|ben|it&#39;s \"so\" <B>|*yes 😀\r\n&#39;|no|Null"});
  EXPECT_EQ(
      ReadRows(Statement("SELECT Sender FROM Messages WHERE SentDate = '3/15/2004 10:30:00'"), {"Sender"}),
      Rows{"anna"});
}

TEST_F(Messages, AreShownAgainWhenIncomplete) {
  EXPECT_EQ(AlertOf(Post("p=m&act=send", {{"Vastaanottaja", "nobody"}}).Body),
            "No recipient.\\nNo subject.\\nNo message.\\n");
  const FakeHost::Fields unwritten{{"Vastaanottaja", "ben, staff"}, {"Otsikko", "\"a\""}, {"Sisalto", ""}};
  EXPECT_TRUE(IsGoldenPage("messages/unwritten", Post("p=m&act=send", unwritten).Body));
  EXPECT_EQ(Stored(), Rows{});
}

TEST_F(Messages, AreAnsweredToTheirSenderWithTheTextQuoted) {
  AddMessage("anna", "Re: it&#39;s");
  EXPECT_TRUE(IsGoldenPage("messages/reply", Get("p=m&act=reply&msg=1").Body));
}

TEST_F(Messages, RequireALogin) {
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
