#include "html/html.h"

#include <gtest/gtest.h>

#include "base/text.h"

namespace orlune {
namespace {

std::string Written(const HtmlPart& part) {
  return Html("{}", part).Text();
}

TEST(HtmlPart, EscapesMarkupAndScriptOnly) {
  struct Case {
    const char* Text;
    const char* Content;
    const char* Attribute;
    const char* Script;
    const char* ScriptAttribute;
  };
  const std::vector<Case> cases{
      {"Lunch & talk (2 > 1)", "Lunch & talk (2 > 1)", "Lunch & talk (2 > 1)", "Lunch & talk (2 > 1)",
       "Lunch \\x26 talk (2 > 1)"},
      {"&#39;quoted&quot;", "&#39;quoted&quot;", "&#39;quoted&quot;", "&#39;quoted&quot;",
       "\\x26#39;quoted\\x26quot;"},
      {"a <b>bold</b> word<BR>", "a <b>bold</b> word<BR>", "a <b>bold</b> word<BR>",
       "a \\x3Cb>bold\\x3C/b> word\\x3CBR>", "a \\x3Cb>bold\\x3C/b> word\\x3CBR>"},
      {"<script>", "&lt;script>", "<script>", "\\x3Cscript>", "\\x3Cscript>"},
      {"<b onclick=x>", "&lt;b onclick=x>", "<b onclick=x>", "\\x3Cb onclick=x>", "\\x3Cb onclick=x>"},
      {"<", "&lt;", "<", "\\x3C", "\\x3C"},
      {"</textarea>", "&lt;/textarea>", "</textarea>", "\\x3C/textarea>", "\\x3C/textarea>"},
      {"say \"hi\"", "say \"hi\"", "say &quot;hi&quot;", "say \"hi\"", "say \\x22hi\\x22"},
      {"it's", "it's", "it's", "it\\'s", "it\\'s"},
      {"empty.\\n", "empty.\\n", "empty.\\n", "empty.\\n", "empty.\\n"},
      {"\\'", "\\'", "\\'", "\\\\\\'", "\\\\\\'"},
      {"\\", "\\", "\\", "\\\\", "\\\\"},
      {"a\r\nb", "a\r\nb", "a\r\nb", "a\\r\\nb", "a\\r\\nb"},
      {"\u2028\u2029\u2030", "\u2028\u2029\u2030", "\u2028\u2029\u2030", "\\u2028\\u2029\u2030",
       "\\u2028\\u2029\u2030"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Written(Content(c.Text)), c.Content);
    EXPECT_EQ(Written(OptionLabel(c.Text)), ReplaceAll(c.Text, "<", "&lt;"));
    EXPECT_EQ(Written(Attribute(c.Text)), c.Attribute);
    EXPECT_EQ(Written(Script(c.Text)), c.Script);
    EXPECT_EQ(Written(ScriptAttribute(c.Text)), c.ScriptAttribute);
  }
}

TEST(Html, FillsPlaceholdersInOrder) {
  Html page("<TD COLSPAN={}>{}", 7, Html("<B>{}</B>", Content("{}")));
  page.Add("</TD>");
  EXPECT_EQ(page.Text(), "<TD COLSPAN=7><B>{}</B></TD>");
}

TEST(IsColour, AcceptsColoursOfHtml) {
  for (const char* colour : {"#FF00a0", "#abc", "red"}) EXPECT_TRUE(IsColour(colour)) << colour;
  for (const char* other : {"", "#", "#12", "#GG0000", "red;x:y", "url(x)", "#ffffff;"}) {
    EXPECT_FALSE(IsColour(other)) << other;
  }
}

TEST(EqualIgnoringCase, FoldsLettersBeyondAscii) {
  EXPECT_TRUE(EqualIgnoringCase("ÅSA Öström", "åsa öSTRÖM"));
  EXPECT_TRUE(EqualIgnoringCase("ADMIN", "admin"));
  EXPECT_FALSE(EqualIgnoringCase("admin", "admin2"));
  EXPECT_FALSE(EqualIgnoringCase("å", "a"));
  EXPECT_EQ(ToLower("\xC3 \xFF Ä"), "\xC3 \xFF ä");
}

}  // namespace
}  // namespace orlune
