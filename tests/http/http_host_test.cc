#include "http/http_host.h"

#include <future>
#include <memory>
#include <thread>

#include <gtest/gtest.h>

#include "base/configuration_error.h"
#include "http/started_host.h"
#include "platform/database.h"
#include "support/http_client.h"
#include "support/write_file.h"

namespace orlune::testing {
namespace {

constexpr const char* kFormType = "Content-Type: application/x-www-form-urlencoded\r\n";

// "name=<value>" for the fields and parameters x and y.
void Echo(const ScriptingContext& context) {
  const Request& request = *context.Request;
  std::string text;
  for (const char* name : {"x", "y"}) {
    text.append("q:").append(name).append("=<").append(request.QueryParameter(name)).append("> ");
    text.append("f:").append(name).append("=<").append(request.FormField(name)).append("> ");
  }
  context.Response->Write(std::move(text));
  context.Response->Write("fields=" + std::to_string(request.FormFieldCount()));
}

TEST(HttpHost, HandsTheRequestToThePage) {
  StartedHost host;
  host.Answer = [](const ScriptingContext& context) {
    context.Response->SetExpires(std::chrono::minutes(0));
    context.Response->Write(std::string(context.Request->QueryString()) + "|" +
                            std::string(context.Request->ServerVariable("SCRIPT_NAME")) + "|" +
                            std::string(context.Request->ServerVariable("HTTP_USER_AGENT")) + "|" +
                            std::string(context.Request->ServerVariable("REMOTE_ADDR")));
  };
  const HttpAnswer answer =
      Fetch(host.Address(), "GET /a.asp?p=c&cd=3%2f15", "User-Agent: (compatible; \xFF)\r\n");
  EXPECT_EQ(answer.Status, 200);
  EXPECT_EQ(answer.Body, "p=c&cd=3%2f15|/a.asp|(compatible; \xEF\xBF\xBD)|");
  EXPECT_EQ(answer.Header("Content-Type"), "text/html; charset=utf-8");
  EXPECT_EQ(answer.Header("Cache-Control"), "no-store");
  EXPECT_EQ(answer.Header("X-Content-Type-Options"), "nosniff");
  EXPECT_EQ(answer.Header("X-Frame-Options"), "SAMEORIGIN");
  EXPECT_EQ(answer.Header("Referrer-Policy"), "same-origin");
  EXPECT_EQ(answer.Header("Set-Cookie"), "");
  EXPECT_EQ(Fetch(host.Address(), "GET http://" + host.Address() + "/a.asp?x").Body, "x|/a.asp||");
  EXPECT_EQ(Fetch(host.Address(), "GET http://" + host.Address()).Header("Location"), "/a.asp");
}

TEST(HttpHost, ReadsForms) {
  StartedHost host;
  host.Answer = Echo;
  const auto part = [](const std::string& about, const std::string& content) {
    return "--bound\r\nContent-Disposition: form-data; " + about + "\r\n\r\n" + content + "\r\n";
  };
  const std::string multipart = part("name=\"x\"", "one") + part("name=\"x\"", "t&w%6f+\xFF") +
                                part("name=\"y\"", "") + part("name=\"z\"; filename=\"f\"", "file");
  constexpr const char* kMultipartType = "Content-Type: Multipart/form-data; boundary=bound\r\n";
  const std::string large(300'000, 'z');
  const struct {
    const char* Name;
    std::string Type;
    std::string Body;
    std::string Expected;
  } cases[] = {
      {"plain", kFormType, "x=a+b%26&y=2", "q:x=<q> f:x=<a b&> q:y=<> f:y=<2> fields=2"},
      {"repeated", kFormType, "x=1&y=&x=2&x=3", "q:x=<q> f:x=<1, 2, 3> q:y=<> f:y=<> fields=2"},
      {"empty and valueless", kFormType, "x=&y", "q:x=<q> f:x=<> q:y=<> f:y=<> fields=2"},
      {"valueless before others", kFormType, "y&x=1&&", "q:x=<q> f:x=<1> q:y=<> f:y=<> fields=2"},
      {"nothing", kFormType, "", "q:x=<q> f:x=<> q:y=<> f:y=<> fields=0"},
      {"bad escapes", kFormType, "x=100%&y=%z\n1", "q:x=<q> f:x=<100%> q:y=<> f:y=<%z\n1> fields=2"},
      {"bad UTF-8 and NUL", kFormType, "x=%C3%A4%C3&y=%00%ED%A0%80",
       "q:x=<q> f:x=<\xC3\xA4\xEF\xBF\xBD> q:y=<> f:y=<\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD> "
       "fields=2"},
      {"long value", kFormType, "y=1&x=" + large, "q:x=<q> f:x=<" + large + "> q:y=<> f:y=<1> fields=2"},
      {"multipart", kMultipartType, multipart + "--bound--\r\n",
       "q:x=<q> f:x=<one, t&w%6f+\xEF\xBF\xBD> q:y=<> f:y=<> fields=2"},
      {"raw equals sign", kFormType, "x=a=b==&y==", "q:x=<q> f:x=<a=b==> q:y=<> f:y=<=> fields=2"},
      {"nameless", kFormType, "=1&x=2", "q:x=<q> f:x=<2> q:y=<> f:y=<> fields=2"},
      {"raw NUL", kFormType, std::string("x=a\0b&y=1", 9),
       "q:x=<q> f:x=<a\xEF\xBF\xBD"
       "b> q:y=<> f:y=<1> fields=2"},
      {"raw NUL in a part", kMultipartType, part("name=\"x\"", std::string("a\0b", 3)) + "--bound--\r\n",
       "q:x=<q> f:x=<a\xEF\xBF\xBD"
       "b> q:y=<> f:y=<> fields=1"},
      {"no form", "Content-Type: text/plain\r\n", "x=1", "q:x=<q> f:x=<> q:y=<> f:y=<> fields=0"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(Fetch(host.Address(), "POST /a.asp?x=q", c.Type, c.Body).Body, c.Expected) << c.Name;
  EXPECT_EQ(Fetch(host.Address(), "POST /a.asp", kMultipartType, multipart).Status, 400);
  EXPECT_EQ(Fetch(host.Address(), "POST /a.asp", "Content-Type: multipart/form-data\r\n", multipart).Status,
            400);
}

TEST(HttpHost, RefusesWhatIsTooLarge) {
  StartedHost host;
  host.Answer = Echo;
  const std::string tooLarge = "x=" + std::string(std::size_t{1} << 20U, 'z');
  EXPECT_EQ(Fetch(host.Address(), "POST /a.asp", kFormType, tooLarge).Status, 413);
  EXPECT_EQ(Fetch(host.Address(), "POST /a.asp", kFormType, tooLarge.substr(0, tooLarge.size() - 2)).Status,
            200);
  const std::string chunked = "Transfer-Encoding: chunked\r\n";
  HttpClient client(host.Address());
  client.Send("POST /a.asp HTTP/1.1\r\nHost: h\r\nConnection: close\r\n" + chunked + kFormType + "\r\n");
  for (int i = 0; i < 3; ++i) client.Send("80000\r\n" + std::string(0x80000, 'z') + "\r\n");
  client.Send("0\r\n\r\n");
  EXPECT_EQ(client.ReadAll().substr(9, 3), "413");
  EXPECT_EQ(
      Fetch(host.Address(), "POST /a.asp", std::string(kFormType) + "Content-Length: 900000000\r\n").Status,
      413);
  EXPECT_EQ(Fetch(host.Address(), "GET /a.asp", "X-Long: " + std::string(100'000, 'z') + "\r\n").Status / 100,
            4);
}

TEST(HttpHost, RefusesAddressesThatAreTooLong) {
  StartedHost host;
  host.Answer = Echo;
  const auto parameters = [](int count) {
    std::string query = "GET /a.asp?x=1";
    for (int i = 1; i < count; ++i) query += "&a";
    return query;
  };
  const std::string longValue = "GET /a.asp?x=1&y=" + std::string(8000, 'z');
  const std::string cookie = "Cookie: c=" + std::string(7000, 'c') + "\r\n";
  EXPECT_EQ(Fetch(host.Address(), parameters(250), cookie).Status, 200);
  EXPECT_EQ(Fetch(host.Address(), longValue + parameters(240).substr(14, 160), cookie).Status, 200);
  for (const std::string& target : {parameters(251), parameters(500), parameters(1000), parameters(3000),
                                    "GET /a.asp?" + std::string(600, '&'), longValue + std::string(200, 'z'),
                                    parameters(20'000), "GET /" + std::string(100'000, 'z')})
    EXPECT_EQ(Fetch(host.Address(), target).Status, 414) << target.size();
  EXPECT_EQ(host.RunningRequests(), 0U);
  EXPECT_EQ(Fetch(host.Address(), "GET /healthz").Status, 200);
}

TEST(HttpHost, RefusesWhatCouldBeReadInTwoWays) {
  StartedHost host;
  host.Answer = Echo;
  const struct {
    const char* Name;
    std::string Target;
    std::string Headers;
    int Status;
    int Answers;
  } cases[] = {
      {"chunked", "/a.asp", "Transfer-Encoding: Chunked\r\n", 200, 2},
      {"the same length twice", "/a.asp", "Content-Length: 5\r\nContent-Length: 5\r\n", 200, 2},
      {"two lengths", "/a.asp", "Content-Length: 5\r\nContent-Length: 3\r\n", 400, 1},
      {"length and encoding", "/a.asp", "Content-Length: 5\r\nTransfer-Encoding: chunked\r\n", 400, 1},
      {"encoding and length", "/a.asp", "transfer-encoding: chunked\r\ncontent-length: 5\r\n", 400, 1},
      {"unknown encoding", "/a.asp", "Transfer-Encoding: gzip, chunked\r\n", 400, 1},
      {"two encodings", "/a.asp", "Transfer-Encoding: chunked\r\nTransfer-Encoding: chunked\r\n", 400, 1},
      {"blank before the colon", "/a.asp", "Content-Length: 5\r\nTransfer-Encoding : chunked\r\n", 400, 1},
      {"NUL in the query", std::string("/a.asp?x=\0y", 11), "Content-Length: 5\r\n", 400, 2},
      {"NUL in the path", std::string("/a.asp\0?x=y", 11), "Content-Length: 5\r\n", 400, 2},
      {"control character", "/a.asp?x=\x01", "Content-Length: 5\r\n", 400, 2},
      {"tab", "/a.asp?x=\ty", "Content-Length: 5\r\n", 400, 2},
      {"delete", "/a.asp?x=\x7F", "Content-Length: 5\r\n", 400, 2},
  };
  for (const auto& c : cases) {
    HttpClient client(host.Address());
    client.Send("POST " + c.Target + " HTTP/1.1\r\nHost: h\r\n" + c.Headers + "\r\n0\r\n\r\n");
    client.Send("GET /smuggled HTTP/1.1\r\nHost: h\r\nConnection: close\r\n\r\n");
    const std::string answers = client.ReadAll();
    EXPECT_EQ(answers.substr(0, 12), "HTTP/1.1 " + std::to_string(c.Status)) << c.Name << answers;
    int count = 0;
    for (std::size_t i = 0; (i = answers.find("HTTP/1.1 ", i)) != std::string::npos; ++i) ++count;
    EXPECT_EQ(count, c.Answers) << c.Name << answers;
  }
}

TEST(HttpHost, AnswersEachAddressAndMethod) {
  StartedHost host;
  host.Answer = Echo;
  WriteFile(host.Folder().Path() / "css" / "a.css", "td {}");
  const struct {
    const char* Request;
    int Status;
    const char* Header;
    const char* Value;
  } cases[] = {
      {"GET /", 302, "Location", "/a.asp"},
      {"GET /?x=1", 302, "Location", "/a.asp"},
      {"GET /healthz", 200, "Content-Type", "text/plain"},
      {"GET /css/a.css", 200, "Content-Length", "5"},
      {"HEAD /css/a.css", 200, "Content-Length", "5"},
      {"HEAD /a.asp", 200, "Content-Length", "36"},
      {"HEAD /a.asp?p=m&act=del&msg=1", 405, "Allow", "GET, POST"},
      {"GET /css/b.css", 404, "Content-Type", "text/html; charset=utf-8"},
      {"GET /A.asp", 404, "Cache-Control", "no-store"},
      {"PUT /a.asp", 405, "Allow", "GET, HEAD, POST"},
      {"DELETE /a.asp", 405, "Allow", "GET, HEAD, POST"},
      {"POST /css/a.css", 405, "Allow", "GET, HEAD"},
      {"POST /healthz", 405, "Allow", "GET, HEAD"},
  };
  for (const auto& c : cases) {
    const HttpAnswer answer = Fetch(host.Address(), c.Request);
    EXPECT_EQ(answer.Status, c.Status) << c.Request;
    EXPECT_EQ(answer.Header(c.Header), c.Value) << c.Request;
    EXPECT_EQ(answer.Body.empty(), *c.Request == 'H' || c.Status == 302) << c.Request;
  }
  EXPECT_EQ(Fetch(host.Address(), "GET /healthz").Body, "ok");
  host.IsHealthy = false;
  EXPECT_EQ(Fetch(host.Address(), "GET /healthz").Status, 503);
}

TEST(HttpHost, RefusesChangesFromOtherSites) {
  StartedHost host;
  host.Answer = Echo;
  const char* crossSite = "Sec-Fetch-Site: cross-site\r\n";
  EXPECT_EQ(Fetch(host.Address(), "GET /a.asp?p=c", crossSite).Status, 200);
  EXPECT_EQ(Fetch(host.Address(), "GET /a.asp?p=e&act=delete", crossSite).Status, 403);
  EXPECT_EQ(
      Fetch(host.Address(), "POST /a.asp", std::string(kFormType) + "Origin: http://evil.example\r\n", "x=1")
          .Status,
      403);
  EXPECT_EQ(Fetch(host.Address(), "POST /a.asp",
                  std::string(kFormType) + "Origin: http://" + host.Address() + "\r\n", "x=1")
                .Status,
            200);
}

TEST(HttpHost, BelievesItsProxiesAboutTheSender) {
  StartedHost host({}, {IpNetwork::Parse("127.0.0.0/8").value()});
  host.Answer = [](const ScriptingContext& context) { context.Session->Set("Login", "ann"); };
  const std::string proxied =
      "X-Forwarded-For: 198.51.100.1\r\nX-Forwarded-For: 192.0.2.7\r\nX-Forwarded-Proto: https\r\n";
  const HttpAnswer answer = Fetch(host.Address(), "GET /a.asp", proxied);
  EXPECT_NE(answer.Header("Set-Cookie").find("; Secure"), std::string::npos);
  const std::string origin = host.Address() + "\r\n";
  EXPECT_EQ(Fetch(host.Address(), "POST /a.asp", proxied + "Origin: https://" + origin).Status, 200);
  EXPECT_EQ(Fetch(host.Address(), "POST /a.asp", proxied + "Origin: http://" + origin).Status, 403);
  host.Stop();
  EXPECT_NE(host.LogText().find("192.0.2.7 GET /a.asp 200 "), std::string::npos) << host.LogText();
}

TEST(HttpHost, TellsAProxyWhenAnotherTryMayHelp) {
  StartedHost host;
  host.Answer = [](const ScriptingContext& context) {
    context.Response->SetStatus(503);
    context.Response->Write("Could not open database a.db.");
  };
  const HttpAnswer closed = Fetch(host.Address(), "GET /a.asp");
  EXPECT_EQ(closed.Status, 503);
  EXPECT_EQ(closed.Body, "Could not open database a.db.");
  host.Answer = [](const ScriptingContext&) { throw DatabaseUnavailable("postgresql://ann:secret@db"); };
  const HttpAnswer lost = Fetch(host.Address(), "GET /a.asp");
  EXPECT_EQ(lost.Status, 503);
  EXPECT_EQ(lost.Body.find("secret"), std::string::npos);
}

TEST(HttpHost, HidesTheCauseOfAFailure) {
  StartedHost host;
  host.Answer = [](const ScriptingContext& context) {
    context.Response->Write("half a page");
    throw std::runtime_error("SELECT Password\nFROM Calendars");
  };
  const HttpAnswer answer = Fetch(host.Address(), "GET /a.asp");
  EXPECT_EQ(answer.Status, 500);
  EXPECT_EQ(answer.Body.find("SELECT"), std::string::npos);
  EXPECT_EQ(answer.Body.find("half"), std::string::npos);
  host.Stop();
  EXPECT_NE(host.LogText().find("SELECT Password FROM Calendars"), std::string::npos);
}

TEST(HttpHost, RedirectsWithoutWhatWasWritten) {
  StartedHost host;
  host.Answer = [](const ScriptingContext& context) {
    context.Response->Write("page");
    context.Response->Redirect("/a.asp?x=1\r\nSet-Cookie: y=2");
  };
  const HttpAnswer answer = Fetch(host.Address(), "GET /a.asp");
  EXPECT_EQ(answer.Status, 302);
  EXPECT_EQ(answer.Header("Location"), "/a.asp?x=1%0D%0ASet-Cookie:%20y=2");
  EXPECT_EQ(answer.Header("Set-Cookie"), "");
  EXPECT_EQ(answer.Body, "");
}

TEST(HttpHost, KeepsSessionsOfTwoPagesApart) {
  StartedHost host;
  host.Answer = [](const ScriptingContext& context) {
    const std::string_view name = context.Request->QueryParameter("name");
    if (!name.empty()) context.Session->Set("Login", name == "-" ? "" : name);
    context.Response->Write(context.Session->Get("Login"));
  };
  const HttpAnswer login = Fetch(host.Address(), "GET /a.asp?name=ann", "X-Forwarded-Proto: https\r\n");
  const std::string sent = login.Header("Set-Cookie");
  EXPECT_EQ(sent.substr(sent.find(';')), "; Path=/a.asp; HttpOnly; SameSite=Lax");
  const std::string cookie = "Cookie: " + sent.substr(0, sent.find(';')) + "\r\n";
  EXPECT_EQ(Fetch(host.Address(), "GET /a.asp", cookie).Body, "ann");
  EXPECT_EQ(Fetch(host.Address(), "GET /a.asp/b.asp", cookie).Body, "");
  host.Elapse(std::chrono::minutes(59));
  EXPECT_EQ(Fetch(host.Address(), "GET /a.asp", cookie).Header("Set-Cookie"), "");
  host.Elapse(std::chrono::minutes(60));
  EXPECT_EQ(Fetch(host.Address(), "GET /a.asp", cookie).Body, "");

  const std::string again = Fetch(host.Address(), "GET /a.asp?name=ann").Header("Set-Cookie");
  const HttpAnswer logout =
      Fetch(host.Address(), "GET /a.asp?name=-", "Cookie: " + again.substr(0, again.find(';')) + "\r\n");
  EXPECT_EQ(logout.Header("Set-Cookie"),
            "orlune_session=; Path=/a.asp; Max-Age=0; Expires=Thu, 01 Jan 1970 00:00:00 GMT; HttpOnly; "
            "SameSite=Lax");
}

TEST(HttpHost, LogsNobodyOutWhileTheSessionsAreAway) {
  StartedHost host;
  host.Answer = [](const ScriptingContext& context) {
    const std::string_view name = context.Request->QueryParameter("name");
    if (name == "none") return context.Response->Write("no login needed");
    if (!name.empty()) context.Session->Set("Login", name == "-" ? "" : name);
    context.Response->Write(context.Session->Get("Login"));
  };
  const std::string sent = Fetch(host.Address(), "GET /a.asp?name=ann").Header("Set-Cookie");
  const std::string cookie = "Cookie: " + sent.substr(0, sent.find(';')) + "\r\n";
  host.Sessions.IsAway = true;
  const struct {
    const char* Target;
    std::string Cookie;
    int Status;
  } cases[] = {
      {"GET /a.asp", cookie, 500},           {"GET /a.asp?name=-", cookie, 500},
      {"GET /a.asp?name=bob", cookie, 500},  {"GET /a.asp?name=bob", "", 500},
      {"GET /a.asp?name=none", cookie, 200}, {"GET /a.asp", "", 200},
  };
  for (const auto& c : cases) {
    const HttpAnswer answer = Fetch(host.Address(), c.Target, c.Cookie);
    EXPECT_EQ(answer.Status, c.Status) << c.Target;
    EXPECT_EQ(answer.Header("Set-Cookie"), "") << c.Target;
  }
  host.Sessions.IsAway = false;
  EXPECT_EQ(Fetch(host.Address(), "GET /a.asp", cookie).Body, "ann");
  host.Stop();
  EXPECT_NE(host.LogText().find("/a.asp: the sessions are away"), std::string::npos);
}

TEST(HttpHost, SealsTheCookiesOfAPage) {
  StartedHost host;
  const Date today{std::chrono::days(12'000)};
  host.Answer = [today](const ScriptingContext& context) {
    const std::string_view act = context.Request->QueryParameter("do");
    if (act == "login") context.Response->SetCookieValue("OLOR", "Login", "ann");
    if (act == "date") context.Response->SetCookieValue("OLOR", "CurrentDate", "3/15/2004");
    if (act == "logout") context.Response->ClearCookie("OLOR");
    context.Response->SetCookiePath("OLOR", "/a.asp");
    context.Response->SetCookieExpires("OLOR", act == "logout" ? today : today + std::chrono::days(1));
    context.Response->Write(std::string(context.Request->CookieValue("OLOR", "Login")) + "," +
                            std::string(context.Request->CookieValue("OLOR", "CurrentDate")));
  };
  EXPECT_EQ(Fetch(host.Address(), "GET /a.asp").Header("Set-Cookie"), "");
  const std::string login = Fetch(host.Address(), "GET /a.asp?do=login").Header("Set-Cookie");
  EXPECT_EQ(login.find("ann"), std::string::npos);
  EXPECT_NE(login.find("; Path=/a.asp; Max-Age=43200; Expires="), std::string::npos) << login;
  const std::string cookie = "Cookie: " + login.substr(0, login.find(';')) + "\r\n";
  const HttpAnswer date = Fetch(host.Address(), "GET /a.asp?do=date", cookie);
  EXPECT_EQ(date.Body, "ann,");
  const std::string second = date.Header("Set-Cookie");
  EXPECT_EQ(
      Fetch(host.Address(), "GET /a.asp", "Cookie: " + second.substr(0, second.find(';')) + "\r\n").Body,
      "ann,3/15/2004");
  EXPECT_EQ(Fetch(host.Address(), "GET /a.asp/b.asp", cookie).Body, ",");
  const std::string logout = Fetch(host.Address(), "GET /a.asp?do=logout", cookie).Header("Set-Cookie");
  EXPECT_EQ(logout.substr(0, 35), "OLOR=; Path=/a.asp; Max-Age=0; Expi") << logout;
}

TEST(HttpHost, RefusesWhatIsNotHttp) {
  StartedHost host;
  HttpClient client(host.Address());
  client.Send("nonsense\r\n\r\n");
  EXPECT_EQ(client.ReadAll().find("HTTP/1.1 200"), std::string::npos);
  EXPECT_EQ(Fetch(host.Address(), "GET /healthz").Status, 200);
}

TEST(HttpHost, DropsConnectionsThatDawdle) {
  HostLimits limits;
  limits.Receiving = std::chrono::milliseconds(40);
  StartedHost host(limits);
  HttpClient silent(host.Address());
  HttpClient slow(host.Address());
  slow.Send(std::string("POST /a.asp HTTP/1.1\r\nHost: h\r\n") + kFormType + "Content-Length: 100\r\n\r\nx=");
  EXPECT_EQ(silent.ReadAll(), "");
  EXPECT_EQ(slow.ReadAll(), "");
}

TEST(HttpHost, BoundsTheConnectionsOfOneAddress) {
  HostLimits limits;
  limits.ConnectionsOfOneAddress = 2;
  StartedHost host(limits);
  HttpClient first(host.Address());
  HttpClient second(host.Address());
  HttpClient third(host.Address());
  EXPECT_EQ(third.ReadAll(), "");
  first.Send("GET /healthz HTTP/1.1\r\nHost: h\r\nConnection: close\r\n\r\n");
  EXPECT_EQ(first.ReadAll().substr(0, 12), "HTTP/1.1 200");
}

TEST(HttpHost, FinishesRunningRequestsBeforeItStops) {
  StartedHost host;
  std::promise<void> entered;
  std::promise<void> released;
  host.Answer = [&entered, &released](const ScriptingContext& context) {
    entered.set_value();
    released.get_future().wait();
    context.Response->Write(std::string(3'000'000, 'z'));
  };
  auto answer = std::async(std::launch::async, [&host] { return Fetch(host.Address(), "GET /a.asp"); });
  entered.get_future().wait();
  auto stopped = std::async(std::launch::async, [&host] { host.Stop(); });
  released.set_value();
  EXPECT_EQ(answer.get().Body.size(), 3'000'000U);
  stopped.get();
  EXPECT_THROW(HttpClient{host.Address()}, std::runtime_error);
}

TEST(HttpHost, EndsKeptConnectionsBeforeItStops) {
  StartedHost host;
  HttpClient kept(host.Address());
  host.CloseConnectionsAfterReply();
  const std::string request = "GET /healthz HTTP/1.1\r\nHost: h\r\n\r\n";
  kept.Send(request + request);
  const std::string answers = kept.ReadAll();
  EXPECT_NE(answers.find("Connection: close"), std::string::npos) << answers;
  EXPECT_EQ(answers.find("HTTP/1.1 200"), answers.rfind("HTTP/1.1")) << answers;
  EXPECT_EQ(Fetch(host.Address(), "GET /a.asp").Status, 200);
}

TEST(HttpHost, AnswersThoseWhoAreConnectingWhenItStops) {
  ListeningSocket socket("127.0.0.1:0");
  const std::string address = socket.Address();
  std::promise<void> entered;
  std::promise<void> released;
  auto host =
      std::make_unique<HttpHost>(std::move(socket), 1, HostLimits(), [&](const RequestMessage& request) {
        if (request.Path != "/slow") return Refusal(404);
        entered.set_value();
        released.get_future().wait();
        return RedirectTo("/");
      });
  auto slow = std::async(std::launch::async, [&address] { return Fetch(address, "GET /slow"); });
  entered.get_future().wait();
  HttpClient waiting(address);
  waiting.Send("GET /waiting HTTP/1.1\r\nHost: h\r\n\r\n");
  host->CloseConnectionsAfterReply();
  auto stopped = std::async(std::launch::async, [&host] { host = nullptr; });
  EXPECT_EQ(stopped.wait_for(std::chrono::milliseconds(20)), std::future_status::timeout);
  released.set_value();
  EXPECT_EQ(waiting.ReadAll().substr(0, 12), "HTTP/1.1 404");
  EXPECT_EQ(slow.get().Status, 302);
  stopped.get();
  EXPECT_THROW(HttpClient{address}, std::runtime_error);
}

TEST(ListeningSocket, RefusesUnusableAddresses) {
  for (const char* address : {"", "8080", "127.0.0.1", "127.0.0.1:", "127.0.0.1:65536", "127.0.0.1:http",
                              "::1:80", "localhost.example:80", "127.0.0.1:-1", ":8080"})
    EXPECT_THROW(ListeningSocket{address}, ConfigurationError) << address;
  const ListeningSocket first("127.0.0.1:0");
  try {
    const ListeningSocket second(first.Address());
    FAIL() << "two sockets at " << first.Address();
  } catch (const std::runtime_error& error) {
    EXPECT_EQ(std::string(error.what()), "cannot listen at " + first.Address() + ": the port is in use");
  }
}

}  // namespace
}  // namespace orlune::testing
