#include "pages/messages/quoting.h"

#include <random>

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

/// The wrap rule as it is defined, by inserting into the text; only for texts whose words fit a line.
std::string QuoteByInserting(std::string_view input) {
  std::string text = "&gt; " + std::string(input);
  std::size_t position = 1;
  std::size_t lastSpace = 0;
  for (int count = 0; position <= text.size(); ++position) {
    ++count;
    if (text[position - 1] == ' ') lastSpace = position;
    if (text[position - 1] == '\n') {
      text.insert(position, "&gt; ");
      lastSpace = position = position + 5;
      count = 5;
    }
    if (count == 35) {
      text.replace(lastSpace - 1, 1, "\r\n&gt; ");
      lastSpace = position = lastSpace + 6;
      count = 5;
    }
  }
  return text;
}

TEST(Quoting, FollowsItsDefinitionForAnyTextOfShortWords) {
  std::mt19937 random(7);
  for (int run = 0; run < 2000; ++run) {
    std::string text;
    for (int word = 0; word < 40; ++word) {
      text.append(random() % 12, 'a');
      const auto separator = random() % 10;
      text += separator == 0 ? "\r\n" : separator == 1 ? "\n" : separator == 2 ? "  " : " ";
    }
    ASSERT_EQ(QuoteForReply(text), QuoteByInserting(text)) << text;
  }
}

}  // namespace
}  // namespace orlune
