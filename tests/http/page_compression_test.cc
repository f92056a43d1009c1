#include "http/page_compression.h"

#include <gtest/gtest.h>

#include "http/css_text.h"
#include "http/started_host.h"
#include "support/gunzip.h"
#include "support/http_client.h"
#include "support/write_file.h"

namespace orlune::testing {
namespace {

TEST(AcceptsGzip, UnlessItIsRefusedOrLessWelcome) {
  for (const char* header : {"gzip", "GZIP", "br, gzip;q=0.1", "*", "br;q=1, *;q=0.5",
                             "gzip;q=1, identity;q=0.5", "gzip, identity", "gzip;q=0.5, *;q=0"})
    EXPECT_TRUE(AcceptsGzip(header)) << header;
  for (const char* header : {"", "identity", "br", "gzip;q=0", "*;q=0", "gzip;q=0, *", "gzipped", "gzip;q=x",
                             "identity, gzip;q=0.5"})
    EXPECT_FALSE(AcceptsGzip(header)) << header;
}

TEST(PageCompression, IsForLargePagesOfTheBrowsersOwnWish) {
  struct Case {
    const char* Name;
    std::size_t Size;
    const char* Accepted;
    const char* Site;
    bool IsCompressed;
  };
  PageCompression compression;
  for (const Case& c :
       {Case{"any browser", 1024, "gzip, br", "", true}, Case{"small", 1023, "gzip", "", false},
        Case{"not accepted", 5000, "br", "", false}, Case{"own link", 5000, "gzip", "same-origin", true},
        Case{"typed", 5000, "gzip", "none", true}, Case{"foreign link", 5000, "gzip", "cross-site", false},
        Case{"another port", 5000, "gzip", "same-site", false}}) {
    RequestMessage request;
    request.Headers.Set("Accept-Encoding", c.Accepted);
    request.Headers.Set("Sec-Fetch-Site", c.Site);
    ReplyMessage reply{200, {}, std::string(c.Size, 'x')};
    compression.Apply(request, true, reply);
    EXPECT_EQ(reply.BodySize() < c.Size, c.IsCompressed) << c.Name;
    EXPECT_EQ(reply.Headers.front(), Header("Vary", "Accept-Encoding")) << c.Name;
    EXPECT_EQ(reply.Headers.size(), c.IsCompressed ? 2U : 1U) << c.Name;
    EXPECT_LT(reply.MemoryBytes(), c.IsCompressed ? 200U : 6000U) << c.Name;
  }
}

TEST(ShortenCss, LeavesOutWhatMeansNothing) {
  for (const auto& [css, expected] :
       {std::pair("/* a */\n\na {\n  b: c d; /* e */\n}\n", "a{b:c d}"),
        {"a/* b */.c /* d */ e {}", "a/**/.c /**/ e{}"},
        {"a::before {content: \"/* \\\" ; \" ; }", "a::before{content:\"/* \\\" ; \"}"},
        {"a {b: url(//c/*.png) /*d*/}", "a{b:url(//c/*.png) /**/}"},
        {"a {b: url(\"c; /*d*/\");  e: f}", "a{b:url(\"c; /*d*/\");e:f}"},
        {".a\\; .b :hover, c > d, .e\\  > f {}", ".a\\; .b :hover,c>d,.e\\ >f{}"},
        {"@media (a > 1px) and (b) {c {d: e;}}", "@media (a>1px) and (b){c{d:e}}"},
        {"a {} /* open", "a{}"},
        {"a {b: 'c\n;  d: e}", "a{b:'c\n;d:e}"},
        {"}", "}"},
        {"", ""}})
    EXPECT_EQ(ShortenCss(css), expected) << css;
}

TEST(HttpHost, SendsPagesAndFilesCompressed) {
  const std::string text(5000, 'x');
  StartedHost host({}, {}, {}, {.Compresses = true});
  unsigned status = 200;
  host.Answer = [&](const ScriptingContext& context) {
    context.Response->SetStatus(status);
    context.Response->Write(text);
  };
  WriteFile(host.Folder().Path() / "a.css", text);
  WriteFile(host.Folder().Path() / "a.svg", text);
  const std::string accepted = "Accept-Encoding: gzip\r\n";
  for (const std::string path : {"/a.asp", "/a.css"}) {
    const HttpAnswer answer = Fetch(host.Address(), "GET " + path, accepted);
    EXPECT_EQ(Gunzipped(answer.Body), text) << path;
    EXPECT_EQ(Fetch(host.Address(), "GET " + path).Body, text) << path;
    const HttpAnswer head = Fetch(host.Address(), "HEAD " + path, accepted);
    for (const char* name : {"Content-Length", "Content-Encoding", "Vary", "ETag"})
      EXPECT_EQ(head.Header(name), answer.Header(name)) << path << " " << name;
  }
  const std::string none;
  for (const auto& [name, value] : SecurityHeaders()) {
    const bool isOfParts = name == "X-Content-Type-Options";
    EXPECT_EQ(Fetch(host.Address(), "GET /a.css").Header(name), isOfParts ? value : none) << name;
    for (const char* path : {"/a.asp", "/a.svg", "/missing.css"})
      EXPECT_EQ(Fetch(host.Address(), std::string("GET ") + path).Header(name), value) << path << name;
  }
  status = 404;
  EXPECT_EQ(Gunzipped(Fetch(host.Address(), "GET /a.asp", accepted).Body), text) << "error pages as well";
}

}  // namespace
}  // namespace orlune::testing
