#include <gtest/gtest.h>

#include "base/log_text.h"
#include "base/url_encoding.h"
#include "base/utf8.h"
#include "http/cookies.h"

namespace orlune::testing {
namespace {

using namespace std::string_literals;

#define BAD "\xEF\xBF\xBD"  // U+FFFD

TEST(RepairUtf8, ReplacesInvalidBytes) {
  const struct {
    const char* Name;
    std::string Input, Expected;
  } cases[] = {
      {"one to four bytes", "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80", "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80"},
      {"NUL", "a\0b"s, "a" BAD "b"},
      {"lone continuation", "a\x80", "a" BAD},
      {"cut short at the end", "\xE2\x82", BAD BAD},
      {"cut short by a letter", "\xC3z", BAD "z"},
      {"overlong slash", "\xC0\xAF", BAD BAD},
      {"overlong in three bytes", "\xE0\x9F\xBF", BAD BAD BAD},
      {"surrogate", "\xED\xA0\x80", BAD BAD BAD},
      {"beyond the last character", "\xF4\x90\x80\x80", BAD BAD BAD BAD}};
  for (const auto& c : cases) EXPECT_EQ(RepairUtf8(c.Input), c.Expected) << c.Name;
}

TEST(DecodeQuery, ReadsNamesAndValues) {
  const struct {
    const char *Query, *Name, *Expected;
  } cases[] = {{"p=c&cd=3%2F15%2F2004", "cd", "3/15/2004"},
               {"t=a+b%2Bc%20d", "t", "a b+c d"},
               {"x=1&y=2&x=3", "x", "1, 3"},
               {"x=&x=", "x", ", "},
               {"x", "x", ""},
               {"x=a=b==", "x", "a=b=="},
               {"&&x=1&", "x", "1"},
               {"=1&x=2", "x", "2"},
               {"x=100%&y=%zz%4", "x", "100%"},
               {"x=100%&y=%zz%4", "y", "%zz%4"},
               {"%78=%C3%A4", "x", "\xC3\xA4"},
               {"x=%ff%00", "x", BAD BAD},
               {"X=1", "x", ""},
               {"x=%25%32%30", "x", "%20"}};
  for (const auto& c : cases) EXPECT_EQ(DecodeQuery(c.Query).Find(c.Name), c.Expected) << c.Query;
  EXPECT_EQ(DecodeQuery("x=1&y=2&x=3&").size(), 2U);
}

TEST(EncodeUrl, PreventsHeaderInjection) {
  EXPECT_EQ(EncodeUrl("/a.asp?p=c&cd=3/15/2004&x=%41"), "/a.asp?p=c&cd=3/15/2004&x=%41");
  EXPECT_EQ(EncodeUrl("/a\r\nSet-Cookie: x=1"), "/a%0D%0ASet-Cookie:%20x=1");
  EXPECT_EQ(EncodeUrl("/\\evil\x7F\xC3\xA4"), "/%5Cevil%7F%C3%A4");
}

TEST(CookieValues, FindsEveryCookieOfTheName) {
  using Values = std::vector<std::string_view>;
  EXPECT_EQ(CookieValues("a=1; b=2;a=3 ; ab=4", "a"), (Values{"1", "3"}));
  EXPECT_EQ(CookieValues("a=x=y", "a"), (Values{"x=y"}));
  EXPECT_EQ(CookieValues(" ; a ;; =1; a=", "a"), (Values{""}));
  EXPECT_EQ(CookieValues("", "a"), Values());
}

TEST(OneLine, KeepsALogEntryOnItsLine) {
  EXPECT_EQ(OneLine("SELECT 1\nforged\tentry\r\x1B"), "SELECT 1 forged entry  ");
}

}  // namespace
}  // namespace orlune::testing
