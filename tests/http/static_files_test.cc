#include "http/static_files.h"

#include <gtest/gtest.h>

#include "base/configuration_error.h"
#include "http/known_links.h"
#include "support/gunzip.h"
#include "support/temporary_folder.h"
#include "support/write_file.h"

namespace orlune::testing {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

using Headers = std::vector<std::pair<std::string_view, std::string_view>>;

ReplyMessage Ask(const StaticFiles& files, const std::string& path, const Headers& headers = {}) {
  RequestMessage request{"GET", path, "", {}, {}};
  for (const auto& [header, value] : headers) request.Headers.Set(header, value);
  return files.Answer(request);
}

std::string HeaderOf(const ReplyMessage& reply, std::string_view name) {
  for (const auto& [header, value] : reply.Headers) {
    if (header == name) return value;
  }
  return {};
}

const std::string& SharedBody(const ReplyMessage& reply) {
  static const std::string kNone = "(the file itself)";
  const auto* shared = std::get_if<SharedText>(&reply.Body);
  return shared == nullptr ? kNone : **shared;
}

class SiteFolder : public ::testing::Test {
 protected:
  SiteFolder() {
    for (const char* name : {"css/default.css", "images/a b\xC3\xA4.GIF", "page.html", "data.bin", ".hidden",
                             ".git/config", "../outside.txt"})
      WriteFile(site_ / name, "text");
    fs::create_symlink(folder_.Path() / "outside.txt", site_ / "out.txt");
    fs::create_directory_symlink(folder_.Path(), site_ / "up");
    fs::create_symlink(site_ / ".hidden", site_ / "shown.txt");
    fs::create_symlink("page.html", site_ / "alias.html");
  }

  ReplyMessage Get(const std::string& path, std::string_view header = "", std::string_view value = "") const {
    return Ask(StaticFiles(site_), path, {{header, value}});
  }

  TemporaryFolder folder_;
  fs::path site_ = folder_.Path() / "site";
};

TEST_F(SiteFolder, ServesItsFilesWithTheirTypes) {
  const std::pair<const char*, const char*> cases[] = {{"/css/default%2Ecss", "text/css; charset=utf-8"},
                                                       {"/images/a%20b%C3%A4.GIF", "image/gif"},
                                                       {"/alias.html", "text/html; charset=utf-8"},
                                                       {"/up/site/page.html", "text/html; charset=utf-8"},
                                                       {"/data.bin", "application/octet-stream"}};
  for (const auto& [path, type] : cases) {
    const ReplyMessage reply = Get(path);
    EXPECT_EQ(reply.Status, 200U) << path;
    EXPECT_EQ(HeaderOf(reply, "Content-Type"), type) << path;
    EXPECT_EQ(reply.BodySize(), 4U) << path;
  }
}

TEST_F(SiteFolder, KeepsEverythingElseToItself) {
  for (const char* path : {"/",
                           "",
                           "css/default.css",
                           "/css",
                           "/css/",
                           "/css/default.css/",
                           "//css/default.css",
                           "/missing.css",
                           "/.hidden",
                           "/%2Ehidden",
                           "/.git/config",
                           "/../outside.txt",
                           "/css/../page.html",
                           "/%2e%2e/outside.txt",
                           "/..%2Foutside.txt",
                           "/css/..%2f..%2foutside.txt",
                           "/./page.html",
                           "/css\\default.css",
                           "/css%5Cdefault.css",
                           "/page.html%00",
                           "/page.html%00.gif",
                           "/page.html%0A",
                           "/page.html%2",
                           "/%zz",
                           "/out.txt",
                           "/up/outside.txt",
                           "/shown.txt",
                           "/css/default.css%2F..%2F..%2F..%2Foutside.txt"})
    EXPECT_EQ(Get(path).Status, 404U) << path;
  EXPECT_THROW(StaticFiles(site_ / "missing"), ConfigurationError);
  EXPECT_THROW(StaticFiles(site_ / "page.html"), ConfigurationError);
}

TEST_F(SiteFolder, SendsNothingThatTheBrowserHas) {
  const ReplyMessage first = Get("/page.html");
  const std::string tag = HeaderOf(first, "ETag");
  for (const std::string& known : {tag, "W/" + tag, "\"x\", " + tag, std::string("*")}) {
    const ReplyMessage reply = Get("/page.html", "If-None-Match", known);
    EXPECT_EQ(reply.Status, 304U) << known;
    EXPECT_EQ(HeaderOf(reply, "ETag"), tag);
  }
  for (const std::string& known :
       {std::string("\"x\""), tag.substr(1, tag.size() - 2), tag.substr(0, tag.size() - 1)})
    EXPECT_EQ(Get("/page.html", "If-None-Match", known).Status, 200U) << known;
  EXPECT_EQ(Get("/page.html", "If-Modified-Since", HeaderOf(first, "Last-Modified")).Status, 304U);
  EXPECT_EQ(Get("/page.html", "If-Modified-Since", "Thu, 01 Jan 1970 00:00:00 GMT").Status, 200U);
  WriteFile(site_ / "page.html", "longer");
  EXPECT_EQ(Get("/page.html", "If-None-Match", tag).Status, 200U);
}

TEST_F(SiteFolder, CompressesTextsForBrowsersThatTakeIt) {
  const std::string sheet(3000, 's');
  WriteFile(site_ / "css/long.css", sheet);
  WriteFile(site_ / "images/long.gif", sheet);
  const StaticFiles files(site_, {.Compresses = true});
  using Case = std::tuple<const char*, const char*, const char*, const char*>;
  for (const auto& [path, accepted, coding, vary] :
       {Case("/css/long.css", "br, gzip", "gzip", "Accept-Encoding"),
        Case("/css/long.css", "br", "", "Accept-Encoding"),
        Case("/css/default.css", "gzip", "", "Accept-Encoding"),  // would not be smaller
        Case("/images/long.gif", "gzip", "", "")}) {
    const ReplyMessage reply = Ask(files, path, {{"Accept-Encoding", accepted}});
    EXPECT_EQ(HeaderOf(reply, "Content-Encoding"), coding) << path << accepted;
    EXPECT_EQ(HeaderOf(reply, "Vary"), vary) << path << accepted;
  }
  const Headers gzip{{"Accept-Encoding", "gzip"}};
  EXPECT_EQ(Gunzipped(SharedBody(Ask(files, "/css/long.css", gzip))), sheet);
  EXPECT_EQ(Ask(files, "/css/long.css", gzip).MemoryBytes(), 0U) << "all replies share it";
  const std::string plainTag = HeaderOf(Ask(files, "/css/long.css"), "ETag");
  const std::string gzipTag = HeaderOf(Ask(files, "/css/long.css", gzip), "ETag");
  EXPECT_NE(plainTag, gzipTag);
  for (const std::string& known : {plainTag, gzipTag}) {
    const ReplyMessage reply =
        Ask(files, "/css/long.css", {{"Accept-Encoding", "gzip"}, {"If-None-Match", known}});
    EXPECT_EQ(reply.Status, 304U);
    EXPECT_EQ(HeaderOf(reply, "ETag"), known) << "of the form that the browser has";
    EXPECT_EQ(HeaderOf(reply, "Vary"), "Accept-Encoding");
  }
  WriteFile(site_ / "css/long.css", std::string(4000, 't'));
  EXPECT_EQ(Gunzipped(SharedBody(Ask(files, "/css/long.css", gzip))), std::string(4000, 't'));
}

TEST_F(SiteFolder, SendsAStyleSheetWithTheOneThatItImports) {
  const StaticFiles files(site_, {.JoinsStyleSheets = true});
  const auto bodyOf = [&](std::string_view sheet) {
    WriteFile(site_ / "css/new.css", sheet);
    return SharedBody(Ask(files, "/css/new.css"));
  };
  EXPECT_EQ(bodyOf("@import url(\"default.css\");\nb {}\n"), "text\nb {}\n");
  EXPECT_EQ(bodyOf("@import url(\"default.css\");"), "text");
  for (const char* sheet :
       {"@import url(\"missing.css\");\n", "@import url(\"../page.css\");\n", "@import url(default.css);\n",
        "@import url(\"default.css\") print;\n", " @import url(\"default.css\");\n",
        "@import url(\"new.css\n", "@import url(\");", "b {}\n@import url(\"default.css\");\n"})
    EXPECT_EQ(bodyOf(sheet), "(the file itself)") << sheet;
  bodyOf("@import url(\"late.css\");\n");
  std::string tag = HeaderOf(Ask(files, "/css/new.css"), "ETag");
  for (const char* imported : {"a {}", "longer {}"}) {
    WriteFile(site_ / "css/late.css", imported);
    EXPECT_EQ(SharedBody(Ask(files, "/css/new.css", {{"If-None-Match", tag}})), imported + std::string("\n"));
    tag = HeaderOf(Ask(files, "/css/new.css"), "ETag");
    EXPECT_EQ(Ask(files, "/css/new.css", {{"If-None-Match", tag}}).Status, 304U);
  }
}

TEST_F(SiteFolder, IsKeptForAYearAtTheAddressesOfItsVersion) {
  WriteFile(site_ / "css/dark.css", "@import url(\"default.css\");\n");
  StaticFiles files(site_, {.JoinsStyleSheets = true});
  const std::string version = "/" + files.ReadVersion();
  const auto lasts = [&](const std::string& path) {
    return HeaderOf(Ask(files, path), "Cache-Control") == "public, max-age=31536000, immutable";
  };
  for (const char* path : {"/css/default.css", "/css/dark.css", "/page.html", "/images/a%20b%C3%A4.GIF"}) {
    EXPECT_TRUE(lasts(version + path)) << path;
    EXPECT_EQ(HeaderOf(Ask(files, path), "Cache-Control"), "max-age=300") << path;
    EXPECT_FALSE(lasts("/v-0123456789" + std::string(path))) << "as another server names it meanwhile";
  }
  for (const char* path :
       {"/v-0123456789", "/v-0123456789/", "/v-0123456789/.hidden", "/v-0123456789/../outside.txt",
        "/v-0123456789/v-0123456789/page.html", "/v-012345678/page.html", "/v-01234567890/page.html",
        "/v-012345678G/page.html", "/css/v-0123456789/default.css"})
    EXPECT_EQ(Ask(files, path).Status, 404U) << path;
  EXPECT_EQ(files.FindLinked("/a.asp", version.substr(1) + "/page.html"), files.Find("/page.html"));

  const fs::path copy = folder_.Path() / "copy";
  fs::copy(site_, copy, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
  EXPECT_EQ("/" + StaticFiles(copy).ReadVersion(), version) << "of another server with the same files";
  WriteFile(site_ / ".hidden", "new");
  EXPECT_EQ("/" + StaticFiles(site_).ReadVersion(), version);
  WriteFile(site_ / "css/default.css", "next");
  EXPECT_NE("/" + StaticFiles(site_).ReadVersion(), version);
  fs::rename(copy / "css/default.css", copy / "css/other.css");
  EXPECT_NE("/" + StaticFiles(copy).ReadVersion(), version);

  WriteFile(site_ / "new.html", "new");
  for (const char* path : {"/css/default.css", "/css/dark.css", "/new.html"})
    EXPECT_FALSE(lasts(version + path)) << "changed since: " << path;
}

TEST_F(SiteFolder, FindsTheLinksOfAPage) {
  const StaticFiles files(site_);
  const fs::path css = fs::canonical(site_) / "css" / "default.css";
  using Link = std::pair<const char*, const char*>;
  for (const auto& [page, link] :
       {Link("/a.asp", "css/default.css"), Link("/a.asp", "/css/default.css"), Link("/", "css/default.css"),
        Link("/a.asp", "./css/default.css?1"), Link("/team/a.asp", "../css/default.css"),
        Link("/a.asp", "../../css/default.css")})
    EXPECT_EQ(files.FindLinked(page, link), css) << page << " " << link;
  for (const auto& [page, link] :
       {Link("/team/a.asp", "css/default.css"), Link("/a.asp", "../outside.txt"), Link("/a.asp", "css/"),
        Link("/a.asp", "http://site.example/css/default.css"), Link("/a.asp", ""),
        Link("/a.asp", "//site.example/css/default.css")})
    EXPECT_EQ(files.FindLinked(page, link), fs::path()) << page << " " << link;
}

TEST_F(SiteFolder, NoticesAStyleSheetThatComesOrGoesWithinASecond) {
  const StaticFiles files(site_);
  KnownLinks links(files);
  const std::chrono::steady_clock::time_point start;
  const auto isServed = [&](std::chrono::milliseconds since) {
    return links.IsServed("/a.asp", "css/new.css", start + since);
  };
  EXPECT_FALSE(isServed(0ms));
  WriteFile(site_ / "css/new.css", "text");
  EXPECT_FALSE(isServed(999ms)) << "asks the file system once a second only";
  EXPECT_TRUE(isServed(1000ms));
  fs::remove(site_ / "css/new.css");
  EXPECT_TRUE(isServed(1999ms));
  EXPECT_FALSE(isServed(2000ms));
  EXPECT_TRUE(links.IsServed("/a.asp", "css/default.css", start)) << "each link has an answer of its own";
  EXPECT_FALSE(links.IsServed("/team/a.asp", "css/default.css", start)) << "and so has each page";
}

}  // namespace
}  // namespace orlune::testing
