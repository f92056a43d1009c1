#include "http/http_host.h"

#include <atomic>
#include <future>
#include <memory>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "base/configuration_error.h"
#include "http/started_host.h"
#include "platform/database.h"
#include "support/http_client.h"
#include "support/write_file.h"

namespace orlune::testing {
namespace {

using namespace std::string_literals;

// "<x> <y> count", the fields x and y of the form and how many fields there are.
void Echo(const ScriptingContext& context) {
  std::string text;
  for (const char* name : {"x", "y"}) text.append("<").append(context.Request->FormField(name)).append("> ");
  context.Response->Write(text + std::to_string(context.Request->FormFieldCount()));
}

// Logs "ann" in for "?name=ann", out for "?name=-", and writes who is logged in.
void LogIn(const ScriptingContext& context) {
  const std::string_view name = context.Request->QueryParameter("name");
  if (!name.empty()) context.Session->Set("Login", name == "-" ? "" : name);
  context.Response->Write(context.Session->Get("Login"));
}

TEST(HttpHost, HandsTheRequestToThePage) {
  StartedHost host;
  host.Answer = [](const ScriptingContext& context) {
    std::string text(context.Request->QueryString());
    for (const char* name :
         {"SCRIPT_NAME", "PATH_INFO", "HTTP_USER_AGENT", "HTTP_ACCEPT_LANGUAGE", "REMOTE_ADDR"})
      text.append("|").append(context.Request->ServerVariable(name));
    context.Response->SetExpires(std::chrono::minutes(0));
    context.Response->SetLanguage("de");
    context.Response->Write(std::move(text));
  };
  const HttpAnswer answer = Fetch(host.Address(), "GET /a.asp?p=c&cd=3%2f15",
                                  "User-Agent: (compatible; \xFF)\r\nAccept-Language: de, en\r\n");
  EXPECT_EQ(answer.Status, 200);
  EXPECT_EQ(answer.Body, "p=c&cd=3%2f15|/a.asp||(compatible; \xEF\xBF\xBD)|de, en|127.0.0.1");
  const std::pair<const char*, const char*> headers[] = {{"Content-Type", "text/html; charset=utf-8"},
                                                         {"Content-Language", "de"},
                                                         {"Cache-Control", "no-store"},
                                                         {"Set-Cookie", ""}};
  for (const auto& [name, value] : headers) EXPECT_EQ(answer.Header(name), value) << name;
  EXPECT_EQ(Fetch(host.Address(), "GET http://" + host.Address() + "/a.asp?x").Body, "x|/a.asp||||127.0.0.1");
  EXPECT_EQ(Fetch(host.Address(), "GET /a.asp/texts?x").Body, "x|/a.asp|/texts|||127.0.0.1");
  EXPECT_EQ(Post(host.Address(), "/a.asp/texts", "x=1").Status, 405);
  EXPECT_EQ(Fetch(host.Address(), "GET /a.asp/text").Status, 404);
  EXPECT_EQ(Fetch(host.Address(), "GET http://" + host.Address()).Header("Location"), "/a.asp");
}

TEST(HttpHost, ServesOthersWhileARequestWaitsForAWriter) {
  std::promise<void> served;
  std::atomic<int> calls = 0;
  StartedHost host;
  host.Answer = [&](const ScriptingContext& context) {
    if (!context.Request->QueryParameter("note").empty()) {
      if (++calls == 1) throw WriteRefused();
      EXPECT_EQ(served.get_future().wait_for(std::chrono::minutes(1)), std::future_status::ready);
    }
    context.Response->Write(std::to_string(calls));
  };
  auto waiting = std::async([&] { return Fetch(host.Address(), "GET /a.asp?note=1"); });
  while (calls < 2) std::this_thread::yield();
  for (int i = 0; i < 4; ++i) EXPECT_EQ(Fetch(host.Address(), "GET /a.asp").Body, "2");
  served.set_value();
  EXPECT_EQ(waiting.get().Body, "2");
}

TEST(HttpHost, AnswersWhatWasStoredAlthoughItsViewIsNotRemembered) {
  StartedHost host;
  host.Answer = [](const ScriptingContext& context) {
    for (const char* key : {"Login", "DisplayMode"}) {
      if (const auto value = context.Request->QueryParameter(key); !value.empty())
        context.Session->Set(key, value);
    }
    context.Response->Write("stored");
  };
  const std::string cookie = Fetch(host.Address(), "GET /a.asp?Login=ann").CookieLine();
  host.Sessions().IsAway = true;
  EXPECT_EQ(Post(host.Address(), "/a.asp?DisplayMode=week", "x=1", cookie).Body, "stored");
  const HttpAnswer login = Post(host.Address(), "/a.asp?Login=bob", "x=1", cookie);
  EXPECT_EQ(login.Status, 503);
  EXPECT_NE(login.Header("Retry-After"), "");
}

TEST(HttpHost, TellsBrowsersWhatNotToDoWithEveryAnswer) {
  StartedHost host;
  const std::string named = " HTTP/1.1\r\nHost: h\r\nConnection: close\r\n";
  const std::string tooLong(17'000, 'z');
  const std::pair<std::string, int> requests[] = {{"GET /a.asp" + named, 200},
                                                  {"GET /nothing" + named, 404},
                                                  {"PUT /a.asp" + named, 405},
                                                  {"GET /a b.asp" + named, 400},
                                                  {"GET /a.asp?" + tooLong + named, 414},
                                                  {"GET /a.asp" + named + "X-Long: " + tooLong + "\r\n", 431},
                                                  {"GET /a.asp HTTP/1.1\r\nConnection: close\r\n", 400},
                                                  {"GET /a.asp HTTP/1.0\r\n", 200},
                                                  {"GET /a.asp" + named + "Host: h\r\n", 400}};
  for (const auto& [request, status] : requests) {
    HttpClient client(host.Address());
    client.Send(request + "\r\n");
    const HttpAnswer answer{0, client.ReadAll(), ""};
    EXPECT_EQ(answer.Head.substr(9, 3), std::to_string(status)) << request;
    for (const auto& [name, value] : SecurityHeaders()) EXPECT_EQ(answer.Header(name), value) << request;
  }
  EXPECT_EQ(SecurityHeaders("").size() + 1, SecurityHeaders("default-src 'self'").size());
}

TEST(HttpHost, AnswersUnderItsNames) {
  StartedHost host({}, {}, {"calendar.example", "[::1]"});
  for (const auto& [name, status] :
       {std::pair("calendar.example", 200), std::pair("Calendar.Example:8080", 200),
        std::pair("[::1]:80", 200), std::pair("[::1]", 200), std::pair("evil.example", 421),
        std::pair("calendar.example.evil", 421), std::pair("", 421), std::pair("[::2]:80", 421)}) {
    for (const std::string path : {"/a.asp", "/nothing", "/healthz"}) {
      HttpClient client(host.Address());
      client.Send("GET " + path + " HTTP/1.1\r\nHost: " + name + "\r\nConnection: close\r\n\r\n");
      const std::string expected = path == "/healthz" ? "200" : std::to_string(status);
      EXPECT_EQ(client.ReadAll().substr(9, 3), path == "/nothing" && status == 200 ? "404" : expected)
          << name << path;
    }
  }
}

std::string FormPart(const std::string& about, const std::string& content) {
  return "--bound\r\nContent-Disposition: form-data; " + about + "\r\n\r\n" + content + "\r\n";
}

const std::string kFormType = "Content-Type: multipart/form-data; boundary=bound\r\n";

TEST(HttpHost, ReadsForms) {
  StartedHost host;
  host.Answer = Echo;
  const std::string parts = FormPart("name=\"x\"", "one") + FormPart("name=\"x\"", "t&w%6f+\xFF\0"s) +
                            FormPart("name=\"y\"", "") + FormPart("name=\"z\"; filename=\"f\"", "file");
  const std::string query = "Application/x-www-form-urlencoded";
  const std::string multipart = "Multipart/form-data; boundary=bound";
  const std::string large(300'000, 'z');
  const struct {
    const char* Name;
    std::string Type, Body, Expected;
    int Status = 200;
  } cases[] = {
      {"query", query, "x=a+b%26&y=%z&x=3", "<a b&, 3> <%z> 2"},
      {"nothing", query, "", "<> <> 0"},
      {"raw NUL", query, "x=a\0b"s, "<a\xEF\xBF\xBD"s + "b> <> 1"},
      {"long value", query, "y=1&x=" + large, "<" + large + "> <1> 2"},
      {"multipart", multipart, parts + "--bound--\r\n", "<one, t&w%6f+\xEF\xBF\xBD\xEF\xBF\xBD> <> 2"},
      {"unfinished", multipart, parts, "", 400},
      {"no boundary", "multipart/form-data", parts, "", 400},
      {"no form", "text/plain", "x=1", "<> <> 0"}};
  for (const auto& c : cases) {
    const HttpAnswer answer =
        Fetch(host.Address(), "POST /a.asp?x=q", "Content-Type: " + c.Type + "\r\n", c.Body);
    EXPECT_EQ(answer.Status, c.Status) << c.Name;
    EXPECT_TRUE(answer.Body == c.Expected || c.Status != 200) << c.Name << answer.Body.substr(0, 200);
  }
}

TEST(HttpHost, ReadsFilesWhereTheyAreTaken) {
  StartedHost host;
  host.Answer = [](const ScriptingContext& context) {
    context.Response->SetDownload("Caf\xC3\xA9 \"1\".ics");
    context.Response->Write(std::string(context.Request->FormField("file")) +
                            std::string(context.Request->FormField("text")));
  };
  const auto file = [](const std::string& content) {
    return FormPart("name=\"file\"; filename=\"f\"", content) + "--bound--\r\n";
  };
  const std::string most(500'000, 'z');
  const struct {
    const char *Name, *Target;
    std::string Form, Headers, Expected;
    int Status = 200;
  } cases[] = {{"bytes as they are", "/a.asp/files", file("\xFF\0\r\n-"s), "", "\xFF\0\r\n-"s},
               {"largest", "/a.asp/files", file(most), "", most},
               {"too large", "/a.asp/files", file(most + "z"), "", "", 413},
               {"far too large", "/a.asp/files", file(most + most + most + most), "", "", 413},
               {"text like a file", "/a.asp/files",
                FormPart("name=\"text\"", most + "\xFF" + most) + file(""), "", most + "\xEF\xBF\xBD" + most},
               {"a page without files", "/a.asp", file("f"), "", ""},
               {"no forms", "/a.asp/texts", file("f"), "", "", 405},
               {"another site", "/a.asp/files", file("f"), "Origin: http://evil.example\r\n", "", 403}};
  for (const auto& c : cases) {
    const HttpAnswer answer =
        Fetch(host.Address(), std::string("POST ") + c.Target, kFormType + c.Headers, c.Form);
    EXPECT_EQ(answer.Status, c.Status) << c.Name;
    EXPECT_TRUE(answer.Body == c.Expected || c.Status != 200) << c.Name << answer.Body.substr(0, 200);
    EXPECT_EQ(answer.Header("Content-Disposition"),
              c.Status == 200
                  ? "attachment; filename=\"Caf____1_.ics\"; filename*=UTF-8''Caf%C3%A9%20%221%22.ics"
                  : "")
        << c.Name;
  }
}

TEST(HttpHost, KeepsNoMoreOfLargeBodiesThanThereIsMemoryFor) {
  HostLimits limits;
  limits.Times.BodyBytes = 700'000;
  StartedHost host(limits);
  std::promise<void> entered;
  std::promise<void> released;
  host.Answer = [&](const ScriptingContext& context) {
    if (context.Request->FormField("x").empty()) return;
    entered.set_value();
    released.get_future().wait();
  };
  const std::string large(400'000, 'z');
  auto held = std::async([&] { return Post(host.Address(), "/a.asp", "x=" + large); });
  entered.get_future().wait();
  const HttpAnswer refused = Post(host.Address(), "/a.asp", "y=" + large);
  EXPECT_EQ(refused.Status, 503);
  EXPECT_NE(refused.Header("Retry-After"), "");
  EXPECT_EQ(Post(host.Address(), "/a.asp", "y=1").Status, 200);
  released.set_value();
  EXPECT_EQ(held.get().Status, 200);
  EXPECT_EQ(Post(host.Address(), "/a.asp", "y=" + large).Status, 200);
}

TEST(HttpHost, RefusesWhatIsTooLarge) {
  StartedHost host;
  host.Answer = Echo;
  const std::string largest = "x=" + std::string((std::size_t{1} << 20U) - 2, 'z');
  EXPECT_EQ(Post(host.Address(), "/a.asp", largest).Status, 200);
  EXPECT_EQ(Post(host.Address(), "/a.asp", largest + "z").Status, 413);
  EXPECT_EQ(Post(host.Address(), "/a.asp", "", "Content-Length: 900000000\r\n").Status, 413);
  HttpClient chunked(host.Address());
  chunked.Send("POST /a.asp HTTP/1.1\r\nHost: h\r\nConnection: close\r\nTransfer-Encoding: chunked\r\n\r\n");
  for (int i = 0; i < 3; ++i) chunked.Send("80000\r\n" + std::string(0x80000, 'z') + "\r\n");
  chunked.Send("0\r\n\r\n");
  EXPECT_EQ(chunked.ReadAll().substr(9, 3), "413");
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
  for (const std::string& target : {parameters(251), parameters(1000), "GET /a.asp?" + std::string(600, '&'),
                                    longValue + std::string(200, 'z'), parameters(20'000)})
    EXPECT_EQ(Fetch(host.Address(), target).Status, 414) << target.size();
  EXPECT_EQ(host.Host().RunningRequests(), 0U);
}

TEST(HttpHost, RefusesWhatCouldBeReadInTwoWays) {
  StartedHost host;
  host.Answer = Echo;
  const std::string length = "Content-Length: 5\r\n";
  const std::string chunked = "Transfer-Encoding: Chunked\r\n";
  const struct {
    const char* Name;
    std::string Target, Headers;
    int Status, Answers;
  } cases[] = {{"chunked", "/a.asp", chunked, 200, 2},
               {"the same length twice", "/a.asp", length + length, 200, 2},
               {"two lengths", "/a.asp", length + "Content-Length: 3\r\n", 400, 1},
               {"length and encoding", "/a.asp", length + chunked, 400, 1},
               {"encoding and length", "/a.asp", chunked + "content-length: 5\r\n", 400, 1},
               {"unknown encoding", "/a.asp", "Transfer-Encoding: gzip, chunked\r\n", 400, 1},
               {"two encodings", "/a.asp", chunked + chunked, 400, 1},
               {"blank before the colon", "/a.asp", length + "Transfer-Encoding : chunked\r\n", 400, 1},
               {"NUL in the query", "/a.asp?x=\0y"s, length, 400, 2},
               {"NUL in the path", "/a.asp\0?x=y"s, length, 400, 2},
               {"control character", "/a.asp?x=\x01", length, 400, 2},
               {"tab", "/a.asp?x=\ty", length, 400, 2},
               {"delete", "/a.asp?x=\x7F", length, 400, 2},
               {"not HTTP", "x", "nonsense", 400, 1}};
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
    const char *Header, *Value;
    const char* Sent = "";
  } cases[] = {{"GET /?x=1", 302, "Location", "/a.asp"},
               {"GET /healthz", 200, "Content-Type", "text/plain"},
               {"GET /css/a.css", 200, "Content-Length", "5"},
               {"HEAD /css/a.css", 200, "Content-Length", "5"},
               {"HEAD /a.asp", 200, "Content-Length", "7"},
               {"HEAD /a.asp?p=m&act=del&msg=1", 405, "Allow", "GET, POST"},
               {"GET /css/b.css", 404, "Content-Type", "text/html; charset=utf-8"},
               {"GET /A.asp", 404, "Cache-Control", "no-store"},
               {"PUT /a.asp", 405, "Allow", "GET, HEAD, POST"},
               {"POST /css/a.css", 405, "Allow", "GET, HEAD"},
               {"POST /healthz", 405, "Allow", "GET, HEAD"},
               {"GET /a.asp?p=c", 200, "", "", "Sec-Fetch-Site: cross-site\r\n"},
               {"GET /a.asp?p=e&act=x", 403, "Set-Cookie", "", "Sec-Fetch-Site: cross-site\r\n"},
               {"POST /a.asp", 403, "Set-Cookie", "", "Origin: http://evil.example\r\n"}};
  for (const auto& c : cases) {
    const HttpAnswer answer = Fetch(host.Address(), c.Request, c.Sent);
    EXPECT_EQ(answer.Status, c.Status) << c.Request;
    EXPECT_EQ(answer.Header(c.Header), c.Value) << c.Request;
    EXPECT_EQ(answer.Body.empty(), *c.Request == 'H' || c.Status == 302) << c.Request;
  }
  EXPECT_EQ(Fetch(host.Address(), "GET /healthz").Body, "ok");
  host.IsHealthy = false;
  EXPECT_EQ(Fetch(host.Address(), "GET /healthz").Status, 503);
}

// "METHOD REST|Depth|body", a reply of 207; a PUT waits for a writer.
ReplyMessage EchoBranch(Access access, const BranchRequest& request) {
  const RequestMessage& message = request.Message;
  if (message.Method == "PUT" && access == Access::kRead) throw WriteRefused();
  std::string text = message.Method + " ";
  text.append(request.Rest).append("|").append(message.Headers.Find("Depth")).append("|");
  return {207, {{"Content-Type", "text/xml"}}, text + message.Body};
}

TEST(HttpHost, AnswersEveryMethodOfABranchWithoutASession) {
  StartedHost host({}, {}, {}, {.Compresses = true});
  host.AnswerBranch = EchoBranch;
  const std::string most(500'000, 'z');
  const struct {
    std::string Request, Headers, Body;
    int Status;
    std::string Expected, Location = "";
  } cases[] = {
      {"PROPFIND /a.asp/dav/x%20y/?q", "Depth: 0\r\n", "<x\xFF\0>"s, 207, "PROPFIND x%20y/|0|<x\xFF\0>"s},
      {"OPTIONS /a.asp/dav/", "", "", 207, "OPTIONS ||"},
      {"POST /a.asp/dav/", "Content-Type: application/x-www-form-urlencoded\r\n", "x=%20", 207,
       "POST ||x=%20"},
      {"UNKNOWN /a.asp/dav/?p=c&act=del", "Sec-Fetch-Site: cross-site\r\n", "", 207, "UNKNOWN ||"},
      {"PUT /a.asp/dav/a.ics", "", most, 207, "PUT a.ics||" + most},
      {"PUT /a.asp/dav/a.ics", "", most + "z", 413, ""},
      {"HEAD /a.asp/dav/a.ics", "", "", 207, ""},
      {"PROPFIND /a.asp/dav", "", "", 301, "", "/a.asp/dav/"},
      {"PROPFIND /.well-known/caldav", "", "", 301, "", "/a.asp/dav/"},
      {"GET /.well-known/caldav", "", "", 301, "", "/a.asp/dav/"},
      {"PROPFIND /", "", "", 301, "", "/a.asp/dav/"},
      {"OPTIONS /", "", "", 301, "", "/a.asp/dav/"},
      {"PROPFIND /a.asp", "", "", 405, ""},
      {"GET /a.asp/davos/", "", "", 404, ""}};
  for (const auto& c : cases) {
    const HttpAnswer answer = Fetch(host.Address(), c.Request, c.Headers, c.Body);
    EXPECT_EQ(answer.Status, c.Status) << c.Request;
    EXPECT_EQ(answer.Header("Location"), c.Location) << c.Request;
    EXPECT_EQ(answer.Header("Set-Cookie"), "") << c.Request;
    EXPECT_TRUE(answer.Header("Content-Security-Policy").empty() || c.Status != 207) << c.Request;
    EXPECT_TRUE(answer.Body == c.Expected || c.Status >= 400) << c.Request << answer.Body.substr(0, 100);
  }
  const HttpAnswer report = Fetch(host.Address(), "REPORT /a.asp/dav/", "Accept-Encoding: gzip\r\n", most);
  EXPECT_LT(report.Body.size(), 9'000U);
}

TEST(HttpHost, ReadsPiecesOfABodyThatTheClientAsksWhetherToSend) {
  StartedHost host;
  host.AnswerBranch = EchoBranch;
  HttpClient client(host.Address());
  client.Send(
      "PUT /a.asp/dav/ HTTP/1.1\r\nHost: h\r\nConnection: close\r\nExpect: 100-continue\r\n"
      "Transfer-Encoding: chunked\r\n\r\n");
  EXPECT_EQ(client.ReadSome().substr(0, 12), "HTTP/1.1 100");
  for (int i = 0; i < 4; ++i) client.Send("1E848\r\n" + std::string(125'000, 'z') + "\r\n");
  client.Send("0\r\n\r\n");
  EXPECT_TRUE(client.ReadAll().ends_with("PUT ||" + std::string(500'000, 'z')));
}

TEST(HttpHost, KeepsSecretAddressesOutOfItsLog) {
  StartedHost host;
  host.AnswerBranch = [](Access, const BranchRequest& request) -> ReplyMessage {
    if (request.Rest == "secret-1.ics") throw std::runtime_error("broken");
    return {200, {}, std::string("calendar")};
  };
  EXPECT_EQ(Fetch(host.Address(), "GET /a.asp/feed/secret-1.ics").Status, 500);
  EXPECT_EQ(Fetch(host.Address(), "GET /a.asp/feed/secret-2.ics?secret-3").Body, "calendar");
  EXPECT_EQ(Fetch(host.Address(), "HEAD /a.asp/feed/secret-2.ics").Header("Content-Length"), "8");
  host.Stop();
  EXPECT_EQ(host.LogText().find("secret"), std::string::npos) << host.LogText();
  EXPECT_NE(host.LogText().find("GET /a.asp/feed/*** 200 8 bytes"), std::string::npos) << host.LogText();
  EXPECT_NE(host.LogText().find("broken"), std::string::npos) << host.LogText();
}

TEST(HttpHost, SendsNothingOfAFailedOrRedirectedPage) {
  StartedHost host;
  host.Answer = [](const ScriptingContext& context) {
    context.Response->Write("secret");
    const std::string_view query = context.Request->QueryString();
    if (query == "error") throw std::runtime_error("SELECT Password\nFROM secret");
    if (query == "away") throw DatabaseUnavailable("postgresql://ann:secret@db");
    context.Response->Redirect("/a.asp?x=1\r\nSet-Cookie: y=2");
  };
  for (const auto& [target, status] : {std::pair("GET /a.asp?error", 500), std::pair("GET /a.asp?away", 503),
                                       std::pair("GET /a.asp", 302)}) {
    const HttpAnswer answer = Fetch(host.Address(), target);
    EXPECT_EQ(answer.Status, status);
    EXPECT_EQ(answer.Body.find("secret"), std::string::npos) << answer.Body;
    EXPECT_EQ(answer.Header("Set-Cookie"), "");
    EXPECT_EQ(answer.Header("Location"), status == 302 ? "/a.asp?x=1%0D%0ASet-Cookie:%20y=2" : "");
  }
  host.Stop();
  EXPECT_NE(host.LogText().find("SELECT Password FROM secret"), std::string::npos);
}

TEST(HttpHost, BelievesItsProxiesAboutTheSender) {
  StartedHost host({}, {IpNetwork::Parse("127.0.0.0/8").value()});
  host.Answer = LogIn;
  const std::string proxied =
      "X-Forwarded-For: 198.51.100.1\r\nX-Forwarded-For: 192.0.2.7\r\nX-Forwarded-Proto: https\r\n";
  const HttpAnswer answer = Fetch(host.Address(), "GET /a.asp?name=ann", proxied);
  EXPECT_NE(answer.Header("Set-Cookie").find("; Secure"), std::string::npos);
  const std::string origin = host.Address() + "\r\n";
  EXPECT_EQ(Fetch(host.Address(), "POST /a.asp", proxied + "Origin: https://" + origin).Status, 200);
  EXPECT_EQ(Fetch(host.Address(), "POST /a.asp", proxied + "Origin: http://" + origin).Status, 403);
  host.Stop();
  EXPECT_NE(host.LogText().find("192.0.2.7 GET /a.asp 200 "), std::string::npos) << host.LogText();
}

TEST(HttpHost, GivesEachPageSessionsOfItsOwn) {
  StartedHost host;
  host.Answer = LogIn;
  const HttpAnswer login = Fetch(host.Address(), "GET /a.asp?name=ann", "X-Forwarded-Proto: https\r\n");
  const std::string sent = login.Header("Set-Cookie");
  EXPECT_EQ(sent.substr(sent.find(';')), "; Path=/a.asp; HttpOnly; SameSite=Lax");
  const HttpAnswer known = Fetch(host.Address(), "GET /a.asp", login.CookieLine());
  EXPECT_EQ(known.Body, "ann");
  EXPECT_EQ(known.Header("Set-Cookie"), "");
  EXPECT_EQ(Fetch(host.Address(), "GET /a.asp/b.asp", login.CookieLine()).Body, "");
  EXPECT_EQ(Fetch(host.Address(), "GET /a.asp?name=-", login.CookieLine()).Header("Set-Cookie"),
            "orlune_session=; Path=/a.asp; Max-Age=0; Expires=Thu, 01 Jan 1970 00:00:00 GMT; HttpOnly; "
            "SameSite=Lax");
}

std::string WithoutStrictCookie(std::string cookieLine) {
  return cookieLine.erase(cookieLine.find("orlune_same_site=1; "), 20);
}

TEST(HttpHost, LetsOnlyItsOwnPagesChangeWhatAnAccountHas) {
  StartedHost host;
  host.Answer = LogIn;
  const std::string both = Fetch(host.Address(), "GET /a.asp?name=ann").CookieLine();
  const std::string session = WithoutStrictCookie(both);
  for (const char* request : {"GET /a.asp?p=m&act=del&msg=1", "GET /a.asp?p=l", "POST /a.asp"}) {
    EXPECT_EQ(Fetch(host.Address(), request, session).Status, 403) << request;
    EXPECT_EQ(Fetch(host.Address(), request, both).Status, 200) << request;
    EXPECT_EQ(Fetch(host.Address(), request, both + "Referer: http://evil.example/\r\n").Status, 403)
        << request;
    EXPECT_EQ(Fetch(host.Address(), request).Status, 200) << request << " of nobody";
  }
  const HttpAnswer link = Fetch(host.Address(), "GET /a.asp", session + "Referer: http://mail.example/\r\n");
  EXPECT_EQ(link.Body, "ann");
  EXPECT_EQ(link.Header("Set-Cookie"), "orlune_same_site=1; Path=/a.asp; HttpOnly; SameSite=Strict");

  const HttpAnswer logout = Fetch(host.Address(), "GET /a.asp?name=-", both);
  EXPECT_EQ(logout.CookieLine(), "Cookie: orlune_session=; orlune_same_site=; \r\n");
  EXPECT_EQ(Fetch(host.Address(), "POST /a.asp", session).Status, 200) << "an ended session";
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
  const HttpAnswer login = Fetch(host.Address(), "GET /a.asp?do=login");
  EXPECT_NE(login.Header("Set-Cookie").find("; Path=/a.asp; Max-Age=43200; Expires="), std::string::npos);
  const std::string foreign = WithoutStrictCookie(login.CookieLine());
  EXPECT_EQ(Fetch(host.Address(), "GET /a.asp?p=l", foreign).Status, 403);
  EXPECT_EQ(Fetch(host.Address(), "GET /a.asp?p=l", login.CookieLine()).Status, 200);
  const HttpAnswer date = Fetch(host.Address(), "GET /a.asp?do=date", login.CookieLine());
  EXPECT_EQ(date.Body, "ann,");
  EXPECT_EQ(Fetch(host.Address(), "GET /a.asp", date.CookieLine()).Body, "ann,3/15/2004");
  const HttpAnswer logout = Fetch(host.Address(), "GET /a.asp?do=logout", login.CookieLine());
  EXPECT_EQ(logout.Header("Set-Cookie").substr(0, 35), "OLOR=; Path=/a.asp; Max-Age=0; Expi");
  EXPECT_EQ(logout.CookieLine(), "Cookie: OLOR=; orlune_same_site=; \r\n");
}

// Waits that no client of these tests should ever see the end of.
HostLimits PatientLimits() {
  HostLimits limits;
  limits.Times.Headers = limits.Times.Receiving = limits.Times.Sending = std::chrono::hours(1);
  limits.Times.Window = limits.Times.Idle = std::chrono::hours(1);
  return limits;
}

const std::string kHalfForm = "POST /a.asp HTTP/1.1\r\nHost: h\r\nContent-Length: 100\r\n\r\nx=";

TEST(HttpHost, CutsOffWhoeverSendsNoHeaders) {
  HostLimits limits = PatientLimits();
  limits.Times.Headers = std::chrono::milliseconds(20);
  StartedHost host(limits);
  HttpClient silent(host.Address());
  HttpClient half(host.Address());
  half.Send("GET /a.asp HTTP/1.1\r\nHost: ");
  EXPECT_EQ(silent.ReadAll() + half.ReadAll(), "");
}

TEST(HttpHost, CutsOffFormsAndRepliesThatDoNotMoveOn) {
  HostLimits limits = PatientLimits();
  limits.Times.Window = std::chrono::milliseconds(20);
  StartedHost host(limits);
  const std::string large(30'000'000, 'z');
  host.Answer = [&large](const ScriptingContext& context) { context.Response->Write(large); };
  HttpClient form(host.Address());
  form.Send(kHalfForm);
  EXPECT_EQ(form.ReadAll(), "");
  while (host.Host().RunningRequests() > 0) std::this_thread::yield();
  HttpClient reader(host.Address());
  reader.Send("GET /a.asp HTTP/1.1\r\nHost: h\r\nConnection: close\r\n\r\n");
  while (host.Host().RunningRequests() == 0) std::this_thread::yield();
  while (host.Host().RunningRequests() > 0) std::this_thread::yield();
  EXPECT_LT(reader.ReadAll().size(), large.size());
}

TEST(HttpHost, DropsTheSlowestReplyOfWhoeverReadsLeastWhenRepliesTakeTooMuch) {
  HostLimits limits = PatientLimits();
  limits.Times.ReplyBytes = 100'000'000;
  StartedHost host(limits, {IpNetwork::Parse("127.0.0.1").value()});
  const std::string large(30'000'000, 'z');
  host.Answer = [&large](const ScriptingContext& context) { context.Response->Write(large); };
  std::vector<std::unique_ptr<HttpClient>> readers;
  const auto begin = [&](const std::string& visitor) {
    readers.push_back(std::make_unique<HttpClient>(host.Address()));
    readers.back()->Send(
        "GET /a.asp HTTP/1.1\r\nHost: h\r\nConnection: close\r\nX-Forwarded-For: " + visitor + "\r\n\r\n");
    return readers.back()->ReadSome().substr(9, 3);
  };
  for (const char* visitor : {"192.0.2.1", "192.0.2.2", "192.0.2.2"}) EXPECT_EQ(begin(visitor), "200");
  EXPECT_EQ(begin("192.0.2.3"), "503");
  EXPECT_LT(readers[1]->ReadAll().size(), large.size() - 100'000);
  while (begin("192.0.2.3") != "200") std::this_thread::yield();
  for (std::size_t kept : {std::size_t{0}, std::size_t{2}, readers.size() - 1})
    EXPECT_GT(readers[kept]->ReadAll().size(), large.size() - 100'000) << kept;
}

TEST(HttpHost, NoticesClientsThatHangUp) {
  StartedHost host(PatientLimits());
  host.Answer = Echo;
  for (const std::string& sent : {std::string(), std::string("GET /a.asp HTTP/1.1\r\nHo"), kHalfForm}) {
    HttpClient client(host.Address());
    client.Send(sent);
    client.EndSending();
    EXPECT_EQ(client.ReadAll(), "") << sent;
  }
  HttpClient waiting(host.Address());
  waiting.Send("GET /a.asp HTTP/1.1\r\nHost: h\r\n\r\nGET /a.asp HTTP/1.1\r\nHost: h\r\n\r\n");
  waiting.EndSending();
  const std::string answers = waiting.ReadAll();
  EXPECT_NE(answers.find("HTTP/1.1 200"), answers.rfind("HTTP/1.1 200")) << answers;
}

const std::string kHealth = "GET /healthz HTTP/1.1\r\nHost: h\r\n\r\n";

TEST(HttpHost, TellsTheConnectionsThatItHasNoPlaceFor) {
  HostLimits limits;
  limits.Connections = {16, 1, 0};
  StartedHost host(limits);
  HttpClient first(host.Address());
  first.Send(kHalfForm);
  while (host.Host().RunningRequests() == 0) std::this_thread::yield();
  HttpClient second(host.Address());
  HttpClient third(host.Address());  // even the place for refusals is taken
  EXPECT_EQ(third.ReadAll().substr(0, 12), "HTTP/1.1 503");
  second.Send(kHealth);
  const std::string refusal = second.ReadAll();
  EXPECT_EQ(refusal.substr(0, 12), "HTTP/1.1 503") << refusal;
  EXPECT_NE(refusal.find("\r\nRetry-After: 5\r\n"), std::string::npos) << refusal;
  EXPECT_EQ(Fetch(host.Address(), "GET /healthz", "", "").Status, 503);
  first.EndSending();
  first.ReadAll();
  while (Fetch(host.Address(), "GET /healthz").Status != 200) std::this_thread::yield();
  host.Stop();
  EXPECT_NE(host.LogText().find("refused a connection of 127.0.0.1"), std::string::npos) << host.LogText();
}

TEST(HttpHost, LimitsTheVisitorsBehindAProxyAndNotTheProxy) {
  HostLimits limits;
  limits.Connections = {16, 1, 0};
  StartedHost host(limits, {IpNetwork::Parse("127.0.0.1").value()});
  const auto request = [](const std::string& visitor, std::string text) {
    return text.insert(text.find("Host: "), "X-Forwarded-For: " + visitor + "\r\n");
  };
  HttpClient half(host.Address());
  half.Send(request("192.0.2.7", kHalfForm));
  while (host.Host().RunningRequests() == 0) std::this_thread::yield();
  HttpClient same(host.Address());
  same.Send(request("192.0.2.7", kHealth));
  const std::string refusal = same.ReadAll();
  EXPECT_EQ(refusal.substr(0, 12), "HTTP/1.1 429") << refusal;
  EXPECT_NE(refusal.find("\r\nRetry-After: 5\r\n"), std::string::npos) << refusal;
  EXPECT_EQ(Fetch(host.Address(), "GET /healthz", "X-Forwarded-For: 192.0.2.8\r\n").Status, 200);
}

TEST(HttpHost, MakesBodiesWhileItSendsThem) {
  HostLimits limits = PatientLimits();
  limits.Times.Window = std::chrono::milliseconds(100);
  spdlog::logger log("test");
  ListeningSocket socket("127.0.0.1:0");
  const std::string address = socket.Address();
  const auto held = std::make_shared<std::size_t>();
  const auto answer = [&held](const RequestMessage& request) {
    const auto addPiece = [=, path = request.Path, i = std::size_t{0}](std::string& piece) mutable {
      if (path == "/broken" && i == 3) throw std::runtime_error("broken");
      piece.append(++i, 'z');
      return path == "/endless" || i < *held + 1000;
    };
    return ReplyMessage{200, {}, BodySource{addPiece}};
  };
  const HttpHost host({std::move(socket), 1, limits, TrustedProxies({}), log, answer});
  const std::string line = "Host: h\r\n\r\n";
  HttpClient old(address);
  old.Send("GET /whole HTTP/1.0\r\n" + line);
  EXPECT_TRUE(old.ReadAll().ends_with("\r\n\r\n" + std::string(500'500, 'z')));

  HttpClient kept(address);
  const std::string whole = "GET /whole HTTP/1.1\r\n" + line;
  kept.Send(whole + "GET /broken HTTP/1.1\r\n" + line);
  const std::string answers = kept.ReadAll();
  EXPECT_EQ(std::count(answers.begin(), answers.end(), 'z'), 500'500) << "without the broken one";
  EXPECT_NE(answers.find("\r\nTransfer-Encoding: chunked\r\n"), std::string::npos);
  EXPECT_EQ(answers.find("\r\n0\r\n\r\n"), answers.rfind("\r\n0\r\n\r\n"));

  const HttpAnswer head = Fetch(address, "HEAD /whole");
  EXPECT_EQ(head.Header("Content-Length") + head.Body, "");

  HttpClient slow(address);
  slow.Send("GET /endless HTTP/1.1\r\n" + line);
  {
    HttpClient leaving(address);
    leaving.Send("GET /endless HTTP/1.1\r\n" + line);
    EXPECT_NE(leaving.ReadSome(), "");
  }
  while (held.use_count() > 1) std::this_thread::yield();
}

TEST(HttpHost, EndsKeptConnectionsBeforeItStops) {
  StartedHost host;
  HttpClient kept(host.Address());
  host.Host().CloseConnectionsAfterReply();
  const std::string request = "GET /healthz HTTP/1.1\r\nHost: h\r\n\r\n";
  kept.Send(request + request);
  const std::string answers = kept.ReadAll();
  EXPECT_NE(answers.find("Connection: close"), std::string::npos) << answers;
  EXPECT_EQ(answers.find("HTTP/1.1 200"), answers.rfind("HTTP/1.1")) << answers;
  EXPECT_EQ(Fetch(host.Address(), "GET /a.asp").Status, 200);
}

TEST(HttpHost, AnswersEveryAcceptedAndWaitingClientBeforeItStops) {
  ListeningSocket socket("127.0.0.1:0");
  const std::string address = socket.Address();
  std::promise<void> entered;
  std::promise<void> released;
  spdlog::logger log("test");
  const auto answer = [&](const RequestMessage& request) {
    if (request.Path != "/slow") return Refusal(404);
    entered.set_value();
    released.get_future().wait();
    return ReplyMessage{200, {}, std::string(3'000'000, 'z')};
  };
  auto host = std::make_unique<HttpHost>(
      HostParts{std::move(socket), 1, HostLimits(), TrustedProxies({}), log, answer});
  auto slow = std::async(std::launch::async, [&address] { return Fetch(address, "GET /slow"); });
  entered.get_future().wait();
  HttpClient waiting(address);
  auto stopped = std::async(std::launch::async, [&host] { host = nullptr; });
  while (true) {
    try {
      HttpClient another(address);
    } catch (const std::runtime_error&) {
      break;  // the socket is closed, and the only thread is still busy
    }
  }
  waiting.Send("GET /waiting HTTP/1.1\r\nHost: h\r\n\r\n");
  released.set_value();
  EXPECT_EQ(slow.get().Body.size(), 3'000'000U);
  EXPECT_EQ(waiting.ReadAll().substr(0, 12), "HTTP/1.1 404");
  stopped.get();
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
