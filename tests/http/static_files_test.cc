#include "http/static_files.h"

#include <gtest/gtest.h>

#include "base/configuration_error.h"
#include "support/temporary_folder.h"
#include "support/write_file.h"

namespace orlune::testing {
namespace {

namespace fs = std::filesystem;

class SiteFolder : public ::testing::Test {
 protected:
  SiteFolder() {
    WriteFile(site_ / "css" / "default.css", "td {}");
    WriteFile(site_ / "images" / "a b\xC3\xA4.gif", "GIF");
    WriteFile(site_ / "page.html", "<P>");
    WriteFile(site_ / "data.bin", "x");
    WriteFile(site_ / ".hidden", "x");
    WriteFile(site_ / ".git" / "config", "x");
    WriteFile(folder_.Path() / "outside.txt", "secret");
    fs::create_symlink(folder_.Path() / "outside.txt", site_ / "out.txt");
    fs::create_directory_symlink(folder_.Path(), site_ / "up");
    fs::create_symlink(site_ / ".hidden", site_ / "shown.txt");
    fs::create_symlink("page.html", site_ / "alias.html");
  }

  ReplyMessage Get(const std::string& path, std::string_view header = "", std::string_view value = "") const {
    RequestMessage request{"GET", path, "", {}, {}};
    if (!header.empty()) request.Headers.Set(header, value);
    return StaticFiles(site_).Answer(request);
  }

  TemporaryFolder folder_;
  fs::path site_ = folder_.Path() / "site";
};

std::string HeaderOf(const ReplyMessage& reply, std::string_view name) {
  for (const auto& [header, value] : reply.Headers) {
    if (header == name) return value;
  }
  return {};
}

TEST_F(SiteFolder, ServesItsFilesWithTheirTypes) {
  const struct {
    const char* Path;
    const char* Type;
    std::size_t Size;
  } cases[] = {
      {"/css/default.css", "text/css; charset=utf-8", 5},
      {"/css/default%2Ecss", "text/css; charset=utf-8", 5},
      {"/images/a%20b%C3%A4.gif", "image/gif", 3},
      {"/page.html", "text/html; charset=utf-8", 3},
      {"/alias.html", "text/html; charset=utf-8", 3},
      {"/data.bin", "application/octet-stream", 1},
  };
  for (const auto& c : cases) {
    const ReplyMessage reply = Get(c.Path);
    EXPECT_EQ(reply.Status, 200U) << c.Path;
    EXPECT_EQ(HeaderOf(reply, "Content-Type"), c.Type) << c.Path;
    EXPECT_EQ(reply.BodySize(), c.Size) << c.Path;
  }
}

TEST_F(SiteFolder, KeepsEverythingElseToItself) {
  for (const std::string path : {"/",
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
                                 "/up/site/page.html",
                                 "/shown.txt",
                                 "/css/default.css%2F..%2F..%2F..%2Foutside.txt"})
    EXPECT_EQ(Get(path).Status, path == "/up/site/page.html" ? 200U : 404U) << path;
  EXPECT_THROW(StaticFiles(site_ / "missing"), ConfigurationError);
  EXPECT_THROW(StaticFiles(site_ / "page.html"), ConfigurationError);
}

TEST_F(SiteFolder, SendsNothingThatTheBrowserHas) {
  const ReplyMessage first = Get("/page.html");
  const std::string tag = HeaderOf(first, "ETag");
  const struct {
    const char* Header;
    std::string Value;
    unsigned Status;
  } cases[] = {
      {"If-None-Match", tag, 304},
      {"If-None-Match", "W/" + tag, 304},
      {"If-None-Match", "\"x\", " + tag, 304},
      {"If-None-Match", "*", 304},
      {"If-None-Match", "\"x\"", 200},
      {"If-None-Match", tag.substr(1, tag.size() - 2), 200},
      {"If-None-Match", tag.substr(0, tag.size() - 1), 200},
      {"If-Modified-Since", HeaderOf(first, "Last-Modified"), 304},
      {"If-Modified-Since", "Thu, 01 Jan 1970 00:00:00 GMT", 200},
  };
  for (const auto& c : cases) {
    const ReplyMessage reply = Get("/page.html", c.Header, c.Value);
    EXPECT_EQ(reply.Status, c.Status) << c.Header << ": " << c.Value;
    EXPECT_EQ(HeaderOf(reply, "ETag"), tag) << c.Value;
  }
  WriteFile(site_ / "page.html", "<P>longer");
  EXPECT_EQ(Get("/page.html", "If-None-Match", tag).Status, 200U);
}

TEST_F(SiteFolder, FindsTheLinksOfAPage) {
  const StaticFiles files(site_);
  const fs::path css = fs::canonical(site_) / "css" / "default.css";
  const struct {
    const char* Page;
    const char* Link;
    bool IsFound;
  } cases[] = {
      {"/OLOrlune.asp", "css/default.css", true},
      {"/OLOrlune.asp", "/css/default.css", true},
      {"/OLOrlune.asp", "./css/default.css?1", true},
      {"/team/cal.asp", "../css/default.css", true},
      {"/", "css/default.css", true},
      {"/OLOrlune.asp", "../../css/default.css", true},
      {"/team/cal.asp", "css/default.css", false},
      {"/OLOrlune.asp", "../outside.txt", false},
      {"/OLOrlune.asp", "http://site.example/css/default.css", false},
      {"/OLOrlune.asp", "//site.example/css/default.css", false},
      {"/OLOrlune.asp", "css/", false},
      {"/OLOrlune.asp", "", false},
  };
  for (const auto& c : cases)
    EXPECT_EQ(files.FindLinked(c.Page, c.Link), c.IsFound ? css : fs::path()) << c.Page << " " << c.Link;
}

}  // namespace
}  // namespace orlune::testing
