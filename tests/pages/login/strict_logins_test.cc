#include "support/calendar_fixture.h"

namespace orlune::testing {
namespace {

class Logins : public CalendarFixture {
 protected:
  std::string PasswordOf(std::string_view name) {
    return Read(Statement("SELECT Password FROM Calendars WHERE Name = '{}'", name));
  }
  bool LogsIn(const std::string& name, const std::string& password) {
    LogIn(name, password);
    return !host_.LastAnswer().RedirectedTo.empty();
  }
  bool IsLoggedIn() { return Get().Body.find("Logout ") != std::string::npos; }
  const Answer& ChangePassword(const std::string& from, const std::string& to) {
    return Post("p=p&act=lsave", {{"oldpw", from}, {"newpw1", to}, {"newpw2", to}});
  }
  static void BeStrict(Orlune& page) { page.Strict(true); }
};

class StrictLogins : public Logins {
 protected:
  StrictLogins() { configure_ = BeStrict; }
};

TEST_F(StrictLogins, HashAPasswordByItsFirstUse) {
  EXPECT_FALSE(LogsIn("anna", "Secret"));
  EXPECT_EQ(PasswordOf("anna"), "secret");
  ASSERT_TRUE(LogsIn("anna", "secret"));
  const std::string hash = PasswordOf("anna");
  EXPECT_TRUE(passwords_.AreEqual(hash, "secret"));
  EXPECT_NE(hash, "secret");
  EXPECT_TRUE(IsLoggedIn());
  configure_ = [](Orlune&) {};
  EXPECT_TRUE(LogsIn("anna", "secret"));
  EXPECT_FALSE(LogsIn("anna", hash));
  EXPECT_EQ(PasswordOf("anna"), hash);
}

TEST_F(StrictLogins, KeepNewPasswordsHashed) {
  ASSERT_TRUE(LogsIn("anna", "secret"));
  EXPECT_EQ(ChangePassword("secret", "").RedirectedTo, "");
  EXPECT_EQ(ChangePassword("secret", "other").RedirectedTo, "/cal.asp?p=p");
  EXPECT_TRUE(passwords_.IsHash(PasswordOf("anna")));
  EXPECT_TRUE(LogsIn("anna", "other"));
  EXPECT_FALSE(LogsIn("anna", "secret"));
}

TEST_F(Logins, NeedAPasswordWhereThePageSaysSo) {
  EXPECT_TRUE(LogsIn("ben", "anything"));
  configure_ = [](Orlune& page) { page.AllowNoPassword(false); };
  EXPECT_FALSE(LogsIn("ben", "anything"));
  EXPECT_FALSE(LogsIn("ben", ""));
}

TEST_F(Logins, EndWhenTheirPasswordChanges) {
  for (const bool usesCookie : {false, true}) {
    configure_ = [&](Orlune& page) { page.UseCookie(usesCookie); };
    LogIn("anna", "secret");
    const auto otherSession = host_.SessionValues;
    const auto otherCookie = host_.Cookie;
    ChangePassword("secret", "other");
    EXPECT_TRUE(IsLoggedIn());
    host_.SessionValues = otherSession;
    host_.Cookie = otherCookie;
    EXPECT_FALSE(IsLoggedIn());
    Run(Statement("UPDATE Calendars SET Password = 'secret' WHERE Name = 'anna'"));
  }
}

TEST_F(Logins, EndWhenTheirAccountIsMadeAnew) {
  LogIn("anna", "secret");
  Run(Statement("DELETE FROM Calendars WHERE Name = 'anna'"));
  Run(Statement("INSERT INTO Calendars (Name, Password) VALUES ('anna', 'secret')"));
  EXPECT_FALSE(IsLoggedIn());
}

TEST_F(Logins, InASealedCookieAreOverAfterALogout) {
  configure_ = [](Orlune& page) { page.UseCookie(true); };
  LogIn("anna", "secret");
  const auto elsewhere = host_.Cookie;
  host_.Cookie.clear();
  LogIn("anna", "secret");
  const auto copy = host_.Cookie;
  Get("p=l");
  host_.Cookie = copy;
  EXPECT_FALSE(IsLoggedIn());
  host_.Cookie = elsewhere;
  EXPECT_TRUE(IsLoggedIn());
}

TEST_F(Logins, GoAtThePaceOfTheGuard) {
  Post("p=e&act=save", {{"title", "posted after the session had ended"}});
  configure_ = [](Orlune& page) { page.LoginName(""); };
  ChangePassword("nobody's", "other");
  configure_ = [](Orlune&) {};
  ASSERT_TRUE(LogsIn("anna", "secret"));
  ChangePassword("wrong", "other");
  ASSERT_FALSE(LogsIn("anna", "wrong"));
  EXPECT_EQ(logins_.Record,
            "anna admitted, anna succeeded, anna admitted, anna failed, anna admitted, anna failed");

  LogIn("anna", "secret");
  logins_.Pause = std::chrono::seconds(30);
  ChangePassword("secret", "other");
  EXPECT_EQ(host_.LastAnswer().Status, 429U);
  EXPECT_EQ(PasswordOf("anna"), "secret");
  EXPECT_FALSE(LogsIn("anna", "secret"));
  const Answer& answer = host_.LastAnswer();
  EXPECT_EQ(answer.Status, 429U);
  EXPECT_EQ(answer.RetryAfter.count(), 30);
  EXPECT_NE(answer.Body.find("CALENDAR LOGIN"), std::string::npos);
  EXPECT_NE(answer.Body.find("try again in 30 seconds"), std::string::npos);
}

class StrictAccounts : public StrictLogins {
 protected:
  StrictAccounts() { LogIn("admin", "demo1"); }
  std::string IdOf(std::string_view name) {
    return Read(Statement("SELECT CalendarID FROM Calendars WHERE Name = '{}'", name));
  }
  const Answer& Save(const std::string& id, const std::string& name, const std::string& password) {
    return Post("p=a&act=um_save", {{"id", id}, {"name", "N"}, {"intname", name}, {"password", password}});
  }
};

TEST_F(StrictAccounts, KeepThePasswordThatTheirFormDoesNotShow) {
  EXPECT_EQ(Post("p=a&act=um_list", {{"id", IdOf("anna")}}).Body.find("secret"), std::string::npos);
  Save(IdOf("anna"), "anna", "");
  EXPECT_EQ(PasswordOf("anna"), "secret");
  Save(IdOf("anna"), "anna", "typed");
  EXPECT_TRUE(passwords_.IsHash(PasswordOf("anna")));
  EXPECT_TRUE(passwords_.AreEqual(PasswordOf("anna"), "typed"));
  Save(IdOf("admin"), "admin", "demo2");
  EXPECT_TRUE(IsLoggedIn());
}

TEST_F(StrictAccounts, BeginWithARandomPasswordThatIsShownOnce) {
  const std::string page = Save("", "carl", "").Body;
  const std::string label = "Password of carl, which is not shown again: <B>";
  const std::size_t begin = page.find(label) + label.size();
  const std::string shown = page.substr(begin, page.find("</B>", begin) - begin);
  EXPECT_EQ(shown.size(), 14U) << page;
  EXPECT_TRUE(passwords_.AreEqual(PasswordOf("carl"), shown));
  EXPECT_EQ(Post("p=a&act=um_list", {{"id", IdOf("carl")}}).Body.find(shown), std::string::npos);
}

TEST_F(StrictAccounts, IncludeTheAdministratorForGood) {
  Post("p=a&act=um_delete", {{"id", IdOf("admin")}});
  Save(IdOf("admin"), "root", "demo1");
  EXPECT_NE(IdOf("admin"), "(none)");
}

}  // namespace
}  // namespace orlune::testing
