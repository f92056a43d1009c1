#include "icalendar/event_texts.h"

#include <algorithm>

#include "base/ascii.h"
#include "base/text.h"

namespace orlune {
namespace {

constexpr std::size_t kMostTitleCharacters = 255;
constexpr std::size_t kMostCommentBytes = std::size_t{64} << 10U;

bool IsContinuation(char c) {
  return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

/// The first characters of which a row has room for so many; quotes take more of it.
std::string CutTitle(const std::string& title) {
  std::size_t characters = 0;
  for (std::size_t i = 0; i < title.size(); ++i) {
    if (!IsContinuation(title[i])) characters += title[i] == '\'' ? 5 : (title[i] == '"' ? 6 : 1);
    if (characters > kMostTitleCharacters) return title.substr(0, i);
  }
  return title;
}

std::string CutComments(std::string comments) {
  if (comments.size() <= kMostCommentBytes) return comments;
  std::size_t end = kMostCommentBytes;
  while (IsContinuation(comments[end])) --end;
  comments.resize(end);
  return comments;
}

std::string WholeComments(const Component& event) {
  return ReplaceAll(UnescapedText(event.ValueOf("DESCRIPTION")), "\n", "\r\n");
}

}  // namespace

std::string WholeTitle(const Component& event) {
  std::string title = UnescapedText(event.ValueOf("SUMMARY"));
  std::ranges::replace(title, '\n', ' ');
  std::ranges::replace(title, '\t', ' ');
  return std::string(TrimBlanks(title));
}

std::string TitleOf(const Component& event) {
  return CutTitle(WholeTitle(event));
}

std::string CommentsOf(const Component& event) {
  return CutComments(WholeComments(event));
}

std::vector<std::string> CategoriesOf(const Component& event) {
  std::vector<std::string> categories;
  for (const ContentLine& line : event.Lines) {
    if (!EqualsIgnoringAsciiCase(line.Name, "CATEGORIES")) continue;
    for (const std::string_view item : ValueItems(line.Value))
      categories.emplace_back(TrimBlanks(UnescapedText(item)));
  }
  return categories;
}

bool IsPrivate(const Component& event) {
  const std::string_view access = event.ValueOf("CLASS");
  return EqualsIgnoringAsciiCase(access, "PRIVATE") || EqualsIgnoringAsciiCase(access, "CONFIDENTIAL");
}

bool IsCut(const Component& event) {
  return TitleOf(event) != WholeTitle(event) || CommentsOf(event) != WholeComments(event);
}

bool IsCancelled(const Component& event) {
  return EqualsIgnoringAsciiCase(event.ValueOf("STATUS"), "CANCELLED");
}

}  // namespace orlune
