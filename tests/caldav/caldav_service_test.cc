#include <algorithm>
#include <optional>
#include <vector>

#include <gtest/gtest.h>

#include "caldav/caldav_fixture.h"
#include "caldav/xml_element.h"

namespace orlune::testing {
namespace {

constexpr const char* kHome = "calendars/anna/";
constexpr const char* kOwn = "calendars/anna/anna/";

std::string Prop(const std::string& properties) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?><A:propfind xmlns:A=\"DAV:\" "
         "xmlns:B=\"urn:ietf:params:xml:ns:caldav\" xmlns:C=\"http://calendarserver.org/ns/\" "
         "xmlns:D=\"http://apple.com/ns/ical/\"><A:prop>" +
         properties + "</A:prop></A:propfind>";
}

std::string Report(const std::string& name, const std::string& content) {
  return "<C:" + name + " xmlns:C=\"urn:ietf:params:xml:ns:caldav\" xmlns:D=\"DAV:\"><D:prop><D:getetag/>" +
         "<C:calendar-data/></D:prop>" + content + "</C:" + name + ">";
}

std::string EventQuery(const std::string& conditions) {
  return Report("calendar-query",
                "<C:filter><C:comp-filter name=\"VCALENDAR\"><C:comp-filter name=\"VEVENT\">" + conditions +
                    "</C:comp-filter></C:comp-filter></C:filter>");
}

std::string SyncReport(const std::string& token, const std::string& more = "") {
  return "<D:sync-collection xmlns:D=\"DAV:\"><D:sync-token>" + token +
         "</D:sync-token><D:sync-level>1</D:sync-level>" + more +
         "<D:prop><D:getetag/></D:prop></D:sync-collection>";
}

std::string EventText(const std::string& uid, const std::string& date, const std::string& title,
                      const std::string& component = "VEVENT") {
  return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nBEGIN:" + component + "\r\nUID:" + uid +
         "\r\nDTSTART;VALUE=DATE:" + date + "\r\nSUMMARY:" + title +
         "\r\nX-KEPT:yes & <no>\r\nEND:" + component + "\r\nEND:VCALENDAR\r\n";
}

class CalDav : public CalDavFixture {
 protected:
  ReplyMessage Put(const std::string& rest, const std::string& text,
                   std::map<std::string, std::string> headers = {}) {
    headers.emplace("Content-Type", "text/calendar; charset=utf-8");
    return Ask({"PUT", rest, std::move(headers), text});
  }

  /// What a multi-status says of each address: the texts of properties, "-" for a removed one.
  std::vector<std::string> Listed(const DavRequest& request) {
    const ReplyMessage reply = Ask(request);
    EXPECT_EQ(reply.Status, 207U) << BodyOf(reply);
    const XmlElement root = ReadXml(BodyOf(reply));
    std::vector<std::string> listed;
    for (const XmlElement& response : root.Children) {
      if (!response.Is(kDav, "response")) continue;
      const bool isGone = response.Find(kDav, "propstat") == nullptr;
      const std::string& link = response.Find(kDav, "href")->Text;
      listed.push_back((isGone ? "-" : "") + link.substr(link.find("/dav/") + 5));
    }
    std::ranges::sort(listed);
    if (const XmlElement* token = root.Find(kDav, "sync-token")) token_ = token->Text;
    return listed;
  }

  std::string token_;
};

/// What clients send, word for word where it matters.
TEST_F(CalDav, IsFoundByClients) {
  const std::string user = "/calendar/dav/principals/anna/</D:href>";
  const struct {
    const char* Name;
    DavRequest Request;
    unsigned Status;
    std::vector<std::string> Contains;
  } kCases[] = {
      {"Apple finds the user",
       {"PROPFIND",
        "",
        {{"Depth", "0"}, {"Brief", "t"}},
        Prop("<A:current-user-principal/><A:principal-URL/><A:resourcetype/>")},
       207,
       {"<D:current-user-principal><D:href>" + user, "<D:resourcetype><D:collection/></D:resourcetype>"}},
      {"Apple looks at the user",
       {"PROPFIND",
        "principals/anna/",
        {{"Depth", "0"}, {"Brief", "t"}},
        Prop("<B:calendar-home-set/><B:calendar-user-address-set/><A:current-user-principal/><A:displayname/>"
             "<C:dropbox-home-URL/><C:email-address-set/><A:principal-collection-set/><A:principal-URL/>"
             "<A:resource-id/><B:schedule-inbox-URL/><B:schedule-outbox-URL/><A:supported-report-set/>")},
       207,
       {"<C:calendar-home-set><D:href>/calendar/dav/calendars/anna/</D:href>",
        "<C:calendar-user-address-set><D:href>" + user, "<D:displayname>Anna A</D:displayname>",
        "<D:principal-collection-set><D:href>/calendar/dav/principals/</D:href>"}},
      {"Apple asks what there is", {"OPTIONS", "principals/anna/"}, 200, {}},
      {"Apple lists the calendars",
       {"PROPFIND",
        kHome,
        {{"Depth", "1"}, {"Brief", "t"}},
        Prop("<A:add-member/><C:allowed-sharing-modes/><D:autoprovisioned/><B:calendar-alarms/>"
             "<D:calendar-color/><B:calendar-description/><B:calendar-free-busy-set/><D:calendar-order/>"
             "<B:calendar-timezone/><A:current-user-privilege-set/><A:displayname/><C:getctag/><A:owner/>"
             "<A:resourcetype/><B:supported-calendar-component-set/><A:sync-token/>")},
       207,
       {"<D:href>/calendar/dav/calendars/anna/anna/</D:href>", "<D:displayname>Sales</D:displayname>",
        "<D:resourcetype><D:collection/><C:calendar/></D:resourcetype>", "<A:calendar-color>#1E88E5FF<",
        "<A:calendar-order>1<", "<C:comp name=\"VEVENT\"/>", "<CS:getctag>", "<D:sync-token>data:,",
        "<D:privilege><D:write/></D:privilege>"}},
      {"Android finds the user",
       {"PROPFIND",
        "",
        {{"Depth", "0"}},
        "<?xml version='1.0' encoding='UTF-8' ?><propfind xmlns=\"DAV:\" "
        "xmlns:CAL=\"urn:ietf:params:xml:ns:caldav\" xmlns:CARD=\"urn:ietf:params:xml:ns:carddav\"><prop>"
        "<resourcetype/><displayname/><CAL:calendar-home-set/><CARD:addressbook-home-set/>"
        "<current-user-principal/></prop></propfind>"},
       207,
       {"<D:current-user-principal><D:href>" + user,
        "<addressbook-home-set xmlns=\"urn:ietf:params:xml:ns:carddav\"/>", "HTTP/1.1 404 Not Found"}},
      {"Android queries the coming months",
       {"REPORT",
        kOwn,
        {{"Depth", "1"}},
        "<CAL:calendar-query xmlns=\"DAV:\" "
        "xmlns:CAL=\"urn:ietf:params:xml:ns:caldav\"><prop><getetag/></prop>"
        "<CAL:filter><CAL:comp-filter name=\"VCALENDAR\"><CAL:comp-filter name=\"VEVENT\"><CAL:time-range "
        "start=\"20031216T103000Z\"/></CAL:comp-filter></CAL:comp-filter></CAL:filter></CAL:calendar-query>"},
       207,
       {"<D:href>/calendar/dav/calendars/anna/anna/a.ics</D:href>", "<D:getetag>\""}},
      {"Thunderbird looks at a calendar",
       {"PROPFIND",
        kOwn,
        {{"Depth", "0"}},
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<D:propfind xmlns:D='DAV:' "
        "xmlns:CS='http://calendarserver.org/ns/' xmlns:C='urn:ietf:params:xml:ns:caldav'><D:prop>"
        "<D:resourcetype/><D:owner/><D:current-user-principal/><D:current-user-privilege-set/>"
        "<D:supported-report-set/><C:supported-calendar-component-set/><CS:getctag/></D:prop></D:propfind>"},
       207,
       {"<D:owner><D:href>" + user, "<D:report><D:sync-collection/></D:report>",
        "<D:report><C:calendar-multiget/></D:report>"}},
      {"Thunderbird searches the user",
       {"REPORT",
        "principals/",
        {{"Depth", "1"}},
        "<D:principal-property-search xmlns:D='DAV:' xmlns:C='urn:ietf:params:xml:ns:caldav'>"
        "<D:property-search><D:prop><D:displayname/></D:prop><D:match>anna</D:match></D:property-search>"
        "<D:prop><C:calendar-home-set/></D:prop></D:principal-property-search>"},
       207,
       {"<C:calendar-home-set><D:href>/calendar/dav/calendars/anna/"}},
      {"everything",
       {"PROPFIND", kOwn, {{"Depth", "1"}}},
       207,
       {"<D:displayname>Anna A</D:displayname>", "<D:getcontenttype>text/calendar; charset=utf-8"}},
      {"the names of properties",
       {"PROPFIND", kOwn, {{"Depth", "0"}}, "<propfind xmlns='DAV:'><propname/></propfind>"},
       207,
       {"<CS:getctag/>", "<D:sync-token/>"}},
  };
  EXPECT_EQ(Put(std::string(kOwn) + "a.ics", EventText("a", "20040316", "Visit")).Status, 201U);
  for (const auto& testCase : kCases) {
    const ReplyMessage reply = Ask(testCase.Request);
    const std::string body = BodyOf(reply);
    EXPECT_EQ(reply.Status, testCase.Status) << testCase.Name << body;
    EXPECT_NE(HeaderOf(reply, "DAV").find("calendar-access"), std::string::npos);
    if (!body.empty()) ReadXml(body);
    for (const std::string& piece : testCase.Contains)
      EXPECT_NE(body.find(piece), std::string::npos) << testCase.Name << ": " << piece << "\n" << body;
  }
}

TEST_F(CalDav, TellsWhyItRefuses) {
  const std::string query = EventQuery("");
  const std::string other = std::string(kOwn) + "b.ics";
  const std::string text = EventText("b", "20040316", "B");
  const std::string alarms = "<C:comp-filter name=\"VALARM\"/>";
  const std::string collation =
      "<C:prop-filter name=\"SUMMARY\"><C:text-match "
      "collation=\"i;unicode-casemap\">a</C:text-match></C:prop-filter>";
  const struct {
    const char* Name;
    DavRequest Request;
    unsigned Status;
    const char* Condition;
  } kCases[] = {
      {"infinite depth", {"PROPFIND", kHome, {{"Depth", "infinity"}}}, 403, "<D:propfind-finite-depth/>"},
      {"no depth", {"PROPFIND", kHome}, 403, "<D:propfind-finite-depth/>"},
      {"broken XML", {"PROPFIND", kHome, {{"Depth", "0"}}, "<a>"}, 400, ""},
      {"another root", {"PROPFIND", kHome, {{"Depth", "0"}}, "<a/>"}, 400, ""},
      {"a document type", {"REPORT", kOwn, {}, "<!DOCTYPE a><a/>"}, 403, "<D:no-external-entities/>"},
      {"somebody else", {"PROPFIND", "calendars/ben/ben/", {{"Depth", "0"}}}, 404, ""},
      {"somebody else's principal", {"PROPFIND", "principals/ben/", {{"Depth", "0"}}}, 404, ""},
      {"another calendar", {"PROPFIND", "calendars/anna/ben/", {{"Depth", "0"}}}, 404, ""},
      {"no such event", {"GET", other}, 404, ""},
      {"no such event to list", {"PROPFIND", other, {{"Depth", "0"}}}, 404, ""},
      {"no such report", {"REPORT", kOwn, {}, "<a/>"}, 403, "<D:supported-report/>"},
      {"a report elsewhere", {"REPORT", kHome, {}, query}, 403, "<D:supported-report/>"},
      {"alarms", {"REPORT", kOwn, {}, EventQuery(alarms)}, 403, "<C:supported-filter/>"},
      {"a collation", {"REPORT", kOwn, {}, EventQuery(collation)}, 403, "<C:supported-collation/>"},
      {"half a time",
       {"REPORT", kOwn, {}, EventQuery("<C:time-range start=\"20040316\"/>")},
       403,
       "<C:valid-filter/>"},
      {"no filter", {"REPORT", kOwn, {}, Report("calendar-query", "")}, 403, "<C:valid-filter/>"},
      {"an unknown token", {"REPORT", kOwn, {}, SyncReport("data:,x-1-1-x")}, 403, "<D:valid-sync-token/>"},
      {"no event", {"PUT", other, {{"Content-Type", "text/calendar"}}, "x"}, 403, "<C:valid-calendar-data/>"},
      {"no calendar",
       {"PUT", other, {{"Content-Type", "text/plain"}}, text},
       403,
       "<C:supported-calendar-data/>"},
      {"a task",
       {"PUT", other, {}, EventText("b", "20040316", "B", "VTODO")},
       403,
       "<C:supported-calendar-component/>"},
      {"no UTF-8", {"PUT", other, {}, "\xE4" + text}, 403, "<C:valid-calendar-data/>"},
      {"a megabyte", {"PUT", other, {}, std::string((1U << 20U) + 1, 'x')}, 403, "<C:max-resource-size/>"},
      {"a calendar only read", {"PUT", "calendars/anna/staff/b.ics", {}, text}, 403, "<D:need-privileges>"},
      {"no such calendar", {"PUT", "calendars/anna/none/b.ics", {}, text}, 409, ""},
      {"a calendar to write", {"PUT", kOwn, {}, text}, 405, ""},
      {"a calendar to delete", {"DELETE", kOwn}, 403, "<D:need-privileges>"},
      {"a calendar to make",
       {"MKCALENDAR", "calendars/anna/new/"},
       403,
       "<C:calendar-collection-location-ok/>"},
      {"a lock", {"LOCK", other}, 405, ""},
      {"a way out", {"GET", "calendars/anna/anna/..%2F..%2Fben"}, 404, ""},
  };
  for (const auto& testCase : kCases) {
    const ReplyMessage reply = Ask(testCase.Request);
    const std::string body = BodyOf(reply);
    EXPECT_EQ(reply.Status, testCase.Status) << testCase.Name << body;
    const XmlElement error = ReadXml(body);
    EXPECT_FALSE(error.Find(kDav, "responsedescription")->Text.empty()) << testCase.Name;
    EXPECT_NE(body.find(testCase.Condition), std::string::npos) << testCase.Name << body;
  }
}

TEST_F(CalDav, StoresWhatIsSentOnItsConditions) {
  const std::string event = std::string(kOwn) + "a.ics";
  const std::string first = EventText("a", "20040316", "First");
  const std::string second = EventText("a", "20040317", "Second");
  const ReplyMessage created = Put(event, first, {{"If-None-Match", "*"}});
  EXPECT_EQ(created.Status, 201U);
  const std::string tag = HeaderOf(created, "ETag");
  const ReplyMessage read = Ask({"GET", event});
  EXPECT_EQ(BodyOf(read), first);
  EXPECT_EQ(HeaderOf(read, "ETag"), tag);
  EXPECT_EQ(Ask({"GET", event, {{"If-None-Match", tag}}}).Status, 304U);

  EXPECT_EQ(Put(event, second, {{"If-None-Match", "*"}}).Status, 412U);
  EXPECT_EQ(Put(event, second, {{"If-Match", "\"x\""}}).Status, 412U);
  EXPECT_EQ(Put(std::string(kOwn) + "new.ics", second, {{"If-Match", tag}}).Status, 412U);
  const ReplyMessage conflict = Put(std::string(kOwn) + "other.ics", second);
  EXPECT_EQ(conflict.Status, 409U);
  EXPECT_NE(BodyOf(conflict).find("<C:no-uid-conflict><D:href>/calendar/dav/calendars/anna/anna/a.ics<"),
            std::string::npos);
  EXPECT_EQ(BodyOf(Ask({"GET", event})), first);

  const ReplyMessage changed = Put(event, second, {{"If-Match", tag}});
  EXPECT_EQ(changed.Status, 204U);
  EXPECT_NE(HeaderOf(changed, "ETag"), tag);
  EXPECT_EQ(Read(Statement("SELECT EventName FROM Events WHERE Owner = 'anna'")), "Second");
  EXPECT_EQ(Ask({"DELETE", event, {{"If-Match", tag}}}).Status, 412U);
  EXPECT_EQ(Ask({"DELETE", event, {{"If-Match", HeaderOf(changed, "ETag")}}}).Status, 204U);
  EXPECT_EQ(Ask({"DELETE", event}).Status, 404U);
  for (const char* method : {"PUT", "DELETE", "PROPPATCH"})
    EXPECT_THROW(Ask({method, event, {}, first}, Access::kRead), WriteRefused);
}

TEST_F(CalDav, TellsWhatHasChangedSince) {
  using List = std::vector<std::string>;
  const std::string own = kOwn;
  const auto changes = [&](const std::string& token) {
    return Listed({"REPORT", own, {}, SyncReport(token)});
  };
  Put(own + "a.ics", EventText("a", "20040316", "A"));
  Put(own + "b.ics", EventText("b", "20040317", "B"));
  EXPECT_EQ(changes(""), (List{own + "a.ics", own + "b.ics"}));
  const std::string first = token_;
  EXPECT_EQ(changes(first), List{});
  EXPECT_EQ(token_, first);

  Put(own + "b.ics", EventText("b", "20040318", "B"));
  Put(own + "c.ics", EventText("c", "20040318", "C"));
  Ask({"DELETE", own + "a.ics"});
  const int page =
      AddEvent("anna", "Of a page", "Type, BeginDate, EndDate", "'none', '3/15/2004', '3/15/2004'");
  const std::string paged = own + std::to_string(page) + "-" +
                            Read(Statement("SELECT DatabaseName FROM ExchangeIdentity")) + ".ics";
  List expected{"-" + own + "a.ics", own + "b.ics", own + "c.ics", paged};
  std::ranges::sort(expected);
  EXPECT_EQ(changes(first), expected);
  EXPECT_EQ(changes(token_), List{});
  EXPECT_EQ(
      Ask({"REPORT", own, {}, SyncReport(first, "<D:limit><D:nresults>3</D:nresults></D:limit>")}).Status,
      507U);

  const std::string get =
      "<D:href>https://here/calendar/dav/" + own + "b.ics</D:href><D:href>/calendar/dav/" + own +
      "a.ics</D:href><D:href>/calendar/dav/" + paged + "</D:href><D:href>/elsewhere</D:href>";
  EXPECT_EQ(Ask({"REPORT", own, {}, Report("calendar-multiget", get)}).Status, 207U);
  const std::string body = BodyOf(Ask({"REPORT", own, {}, Report("calendar-multiget", get)}));
  EXPECT_NE(body.find("<D:href>/elsewhere</D:href><D:status>HTTP/1.1 404"), std::string::npos);
  EXPECT_NE(body.find("a.ics</D:href><D:status>HTTP/1.1 404"), std::string::npos);
  EXPECT_NE(body.find("X-KEPT:yes &amp; &lt;no&gt;&#13;\n"), std::string::npos);
  EXPECT_NE(body.find("SUMMARY:Of a page"), std::string::npos);
}

TEST_F(CalDav, QueriesEvents) {
  using List = std::vector<std::string>;
  const std::string own = kOwn;
  Put(own + "a.ics", EventText("a", "20040316", "Apple pie"));
  Put(own + "b.ics", EventText("b", "20040420", "Bread"));
  const List both{own + "a.ics", own + "b.ics"};
  const auto match = [](const std::string& attributes, const std::string& text) {
    return "<C:prop-filter name=\"SUMMARY\"><C:text-match " + attributes + ">" + text +
           "</C:text-match></C:prop-filter>";
  };
  const struct {
    std::string Query;
    List Expected;
  } kCases[] = {
      {EventQuery(""), both},
      {EventQuery("<C:time-range start=\"20040316T210000Z\" end=\"20040401T000000Z\"/>"), {own + "a.ics"}},
      {EventQuery("<C:time-range start=\"20040316T220000Z\" end=\"20040419T210000Z\"/>"), {}},
      {EventQuery("<C:time-range end=\"20040401T000000Z\"/>"), {own + "a.ics"}},
      {EventQuery("<C:time-range start=\"20040401T000000Z\"/>"), {own + "b.ics"}},
      {EventQuery(match("", "PIE")), {own + "a.ics"}},
      {EventQuery(match("collation=\"i;octet\"", "PIE")), {}},
      {EventQuery(match("negate-condition=\"yes\"", "pie")), {own + "b.ics"}},
      {EventQuery("<C:prop-filter name=\"LOCATION\"><C:is-not-defined/></C:prop-filter>"), both},
      {Report("calendar-query", "<C:filter><C:comp-filter name=\"VCALENDAR\"/></C:filter>"), both},
      {Report("calendar-query",
              "<C:filter><C:comp-filter name=\"VCALENDAR\"><C:comp-filter name=\"VTODO\"/>"
              "</C:comp-filter></C:filter>"),
       {}},
      {Report("calendar-query",
              "<C:filter><C:comp-filter name=\"VCALENDAR\"><C:comp-filter name=\"VTODO\">"
              "<C:is-not-defined/></C:comp-filter></C:comp-filter></C:filter>"),
       both},
  };
  for (const auto& testCase : kCases)
    EXPECT_EQ(Listed({"REPORT", own, {{"Depth", "1"}}, testCase.Query}), testCase.Expected) << testCase.Query;
  const std::string expanded = BodyOf(
      Ask({"REPORT",
           own,
           {},
           "<C:calendar-query xmlns:C='urn:ietf:params:xml:ns:caldav' xmlns:D='DAV:'><D:prop>"
           "<C:calendar-data><C:expand start='20040301T000000Z' end='20040401T000000Z'/></C:calendar-data>"
           "</D:prop><C:filter><C:comp-filter name='VCALENDAR'/></C:filter></C:calendar-query>"}));
  EXPECT_NE(expanded.find("SUMMARY:Apple pie"), std::string::npos);
  EXPECT_EQ(expanded.find("SUMMARY:Bread"), std::string::npos);
  const ReplyMessage busy = Ask({"REPORT",
                                 own,
                                 {},
                                 "<C:free-busy-query xmlns:C='urn:ietf:params:xml:ns:caldav'><C:time-range "
                                 "start='20040301T000000Z' end='20040401T000000Z'/></C:free-busy-query>"});
  EXPECT_NE(BodyOf(busy).find("\r\nFREEBUSY;FBTYPE=BUSY:20040315T220000Z/20040316T220000Z\r\n"),
            std::string::npos);
}

TEST_F(CalDav, KeepsColourAndOrderOfACalendar) {
  const auto update = [&](const std::string& properties) {
    return BodyOf(Ask({"PROPPATCH",
                       "calendars/anna/staff/",
                       {},
                       "<D:propertyupdate xmlns:D='DAV:' xmlns:E='http://apple.com/ns/ical/'>" + properties +
                           "</D:propertyupdate>"}));
  };
  const auto colour = [&] {
    const std::string body = BodyOf(Ask({"PROPFIND",
                                         "calendars/anna/staff/",
                                         {{"Depth", "0"}},
                                         Prop("<D:calendar-color/><D:calendar-order/>")}));
    const std::size_t begin = body.find("<A:calendar-color>");
    return body.substr(begin, body.find("</D:prop>") - begin);
  };
  const std::string unset = colour();
  const std::string set =
      "<D:set><D:prop><E:calendar-color symbolic-color='red'>#ff0000ff</E:calendar-color>"
      "<E:calendar-order>7</E:calendar-order></D:prop></D:set>";
  const std::string both = update(set + "<D:set><D:prop><D:displayname>X</D:displayname></D:prop></D:set>");
  EXPECT_NE(both.find("HTTP/1.1 424"), std::string::npos);
  EXPECT_NE(both.find("<D:cannot-modify-protected-property/>"), std::string::npos);
  EXPECT_EQ(colour(), unset);
  EXPECT_NE(update(set).find("200 OK"), std::string::npos);
  EXPECT_EQ(colour(), "<A:calendar-color>#ff0000ff</A:calendar-color><A:calendar-order>7</A:calendar-order>");
  EXPECT_NE(update("<D:set><D:prop><E:calendar-color>red</E:calendar-color></D:prop></D:set>").find("409"),
            std::string::npos);
  update("<D:remove><D:prop><E:calendar-color/><E:calendar-order/></D:prop></D:remove>");
  EXPECT_EQ(colour(), unset);
}

}  // namespace
}  // namespace orlune::testing
