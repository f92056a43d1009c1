#include "pages/messages/quoting.h"

#include <gtest/gtest.h>

namespace orlune {
namespace {

TEST(Quoting, MarksAndWrapsLines) {
  const std::string thirty(30, 'x');
  const struct {
    const char* Name;
    std::string Text;
    std::string Expected;
  } cases[] = {
      {"nothing", "", "&gt; "},
      {"a word", "abc", "&gt; abc"},
      {"two lines", "a\r\nb", "&gt; a\r\n&gt; b"},
      {"an end of line at the end", "a\n", "&gt; a\n&gt; "},
      {"34 characters fit", std::string(29, 'x'), "&gt; " + std::string(29, 'x')},
      {"the blank that is the 35th character breaks", std::string(29, 'x') + " y",
       "&gt; " + std::string(29, 'x') + "\r\n&gt; y"},
      {"the last blank breaks", "aaaa bbbb cccc dddd eeee ffff gggg",
       "&gt; aaaa bbbb cccc dddd eeee ffff\r\n&gt; gggg"},
      {"words after the break count on the new line",
       "aaaaaaaaaaaaaaaaaaaaaaaa bbbbbb cccccc dddddd eeeeee f",
       "&gt; aaaaaaaaaaaaaaaaaaaaaaaa\r\n&gt; bbbbbb cccccc dddddd eeeeee f"},
      {"and one more than fit breaks it", "aaaaaaaaaaaaaaaaaaaaaaaa bbbbbb cccccc dddddd eeeeee ff",
       "&gt; aaaaaaaaaaaaaaaaaaaaaaaa\r\n&gt; bbbbbb cccccc dddddd eeeeee\r\n&gt; ff"},
      {"a word too long for a line breaks inside", thirty, "&gt; " + std::string(29, 'x') + "\r\n&gt; x"},
      {"a character reference stays whole", std::string(27, 'x') + "&#39;s",
       "&gt; " + std::string(27, 'x') + "\r\n&gt; &#39;s"},
      {"a word that just fits keeps its end of line", std::string(29, 'x') + "\r\ny",
       "&gt; " + std::string(29, 'x') + "\r\n&gt; y"},
      {"characters count, not bytes", "ääää ääää ääää ääää ääää ääää 😀😀😀😀",
       "&gt; ääää ääää ääää ääää ääää ääää\r\n&gt; 😀😀😀😀"},
  };
  for (const auto& c : cases) EXPECT_EQ(QuoteForReply(c.Text), c.Expected) << c.Name;
}

}  // namespace
}  // namespace orlune
