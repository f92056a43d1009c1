#include "html/html.h"

#include <algorithm>
#include <charconv>

namespace orlune {
namespace {

bool IsLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

/// Whether `text`, which begins with "<", begins with a tag that users may enter in texts.
bool BeginsHarmlessTag(std::string_view text) {
  constexpr std::array<std::string_view, 12> kHarmless{"B",  "I", "U",  "S",  "EM", "STRONG",
                                                       "BR", "P", "HR", "UL", "OL", "LI"};
  text.remove_prefix(1);
  if (text.starts_with('/')) text.remove_prefix(1);
  const auto nameEnd = std::find_if_not(text.begin(), text.end(), IsLetter);
  const std::string_view name = text.substr(0, static_cast<std::size_t>(nameEnd - text.begin()));
  text.remove_prefix(name.size());
  if (!text.starts_with('>') && !text.starts_with("/>") && !text.starts_with(" />")) return false;
  return std::any_of(kHarmless.begin(), kHarmless.end(), [&](std::string_view harmless) {
    return std::equal(name.begin(), name.end(), harmless.begin(), harmless.end(),
                      [](char a, char b) { return (a & ~0x20) == b; });
  });
}

/// A lookup table: faster than `find_first_of`, which compares with each member.
class CharacterSet {
 public:
  explicit constexpr CharacterSet(std::string_view members) {
    for (const char c : members) isMember_[static_cast<unsigned char>(c)] = true;
  }

  std::size_t FindIn(std::string_view text) const {
    for (std::size_t at = 0; at < text.size(); ++at) {
      if (isMember_[static_cast<unsigned char>(text[at])]) return at;
    }
    return std::string_view::npos;
  }

 private:
  std::array<bool, 256> isMember_{};
};

/// Appends `text`. Where `special` stands at the beginning of `rest`, appends `replacement(rest)` instead.
template <class Replacement>
void AppendReplacing(std::string& html, std::string_view text, char special, Replacement replacement) {
  for (std::size_t at = text.find(special); at != std::string_view::npos; at = text.find(special)) {
    html.append(text.substr(0, at)).append(replacement(text.substr(at)));
    text.remove_prefix(at + 1);
  }
  html += text;
}

void AppendContent(std::string& html, std::string_view text) {
  AppendReplacing(html, text, '<',
                  [](std::string_view rest) { return BeginsHarmlessTag(rest) ? "<" : "&lt;"; });
}

void AppendLabel(std::string& html, std::string_view text) {
  AppendReplacing(html, text, '<', [](std::string_view) { return "&lt;"; });
}

void AppendAttribute(std::string& html, std::string_view text) {
  AppendReplacing(html, text, '"', [](std::string_view) { return "&quot;"; });
}

/// U+2028 and U+2029, which end a line in scripts, share the first two of their three bytes.
constexpr std::string_view kLineSeparatorStart = "\xE2\x80";

/// Returns how many characters of `rest` it replaced.
std::size_t AppendScriptCharacter(std::string& html, std::string_view rest) {
  if (rest.starts_with("\\n")) {
    html += "\\n";
    return 2;
  }
  if (rest.starts_with(kLineSeparatorStart) && rest.size() > 2 && (rest[2] == '\xA8' || rest[2] == '\xA9')) {
    html += rest[2] == '\xA8' ? "\\u2028" : "\\u2029";
    return 3;
  }
  switch (rest.front()) {
    case '\\':
      html += "\\\\";
      break;
    case '\'':
      html += "\\'";
      break;
    case '"':
      html += "\\x22";
      break;
    case '<':
      html += "\\x3C";
      break;
    case '&':
      html += "\\x26";
      break;
    case '\r':
      html += "\\r";
      break;
    case '\n':
      html += "\\n";
      break;
    default:
      html += rest.front();
  }
  return 1;
}

constexpr CharacterSet kScriptSpecial("\\'<\r\n\xE2");
constexpr CharacterSet kScriptAttributeSpecial("\\'<\r\n\xE2\"&");

void AppendScript(std::string& html, std::string_view text, const CharacterSet& special) {
  for (std::size_t at = special.FindIn(text); at != std::string_view::npos; at = special.FindIn(text)) {
    html += text.substr(0, at);
    text.remove_prefix(at);
    text.remove_prefix(AppendScriptCharacter(html, text));
  }
  html += text;
}

void AppendNumber(std::string& html, std::int64_t number) {
  std::array<char, 20> digits{};
  html.append(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr);
}

}  // namespace

HtmlPart::HtmlPart(const Html& html) : kind_(Kind::kMarkup), text_(html.Text()) {}

void HtmlPart::AppendTo(std::string& html) const {
  switch (kind_) {
    case Kind::kMarkup:
      html += text_;
      break;
    case Kind::kNumber:
      AppendNumber(html, number_);
      break;
    case Kind::kContent:
      AppendContent(html, text_);
      break;
    case Kind::kLabel:
      AppendLabel(html, text_);
      break;
    case Kind::kAttribute:
      AppendAttribute(html, text_);
      break;
    case Kind::kScript:
      AppendScript(html, text_, kScriptSpecial);
      break;
    case Kind::kScriptAttribute:
      AppendScript(html, text_, kScriptAttributeSpecial);
      break;
  }
}

HtmlPart Content(std::string_view text) {
  return {HtmlPart::Kind::kContent, text};
}
HtmlPart OptionLabel(std::string_view text) {
  return {HtmlPart::Kind::kLabel, text};
}
HtmlPart Attribute(std::string_view text) {
  return {HtmlPart::Kind::kAttribute, text};
}
HtmlPart Script(std::string_view text) {
  return {HtmlPart::Kind::kScript, text};
}
HtmlPart ScriptAttribute(std::string_view text) {
  return {HtmlPart::Kind::kScriptAttribute, text};
}
HtmlPart ConfiguredHtml(std::string_view text) {
  return {HtmlPart::Kind::kMarkup, text};
}

void Html::AddFormatted(std::span<const std::string_view> pieces, std::span<const HtmlPart> parts) {
  if (text_.empty()) ReserveFor(pieces, parts);
  for (std::size_t i = 0; i < parts.size(); ++i) {
    text_ += pieces[i];
    parts[i].AppendTo(text_);
  }
  text_ += pieces.back();
}

/// Most fragments are made in one go and then fit; a page grows.
void Html::ReserveFor(std::span<const std::string_view> pieces, std::span<const HtmlPart> parts) {
  std::size_t size = 0;
  for (const std::string_view piece : pieces) size += piece.size();
  for (const HtmlPart& part : parts) size += part.SizeUnescaped();
  text_.reserve(size);
}

bool IsColour(std::string_view text) {
  if (!text.starts_with('#')) return !text.empty() && std::all_of(text.begin(), text.end(), IsLetter);
  text.remove_prefix(1);
  return (text.size() == 3 || text.size() == 6) && std::all_of(text.begin(), text.end(), [](char c) {
           return IsDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
         });
}

}  // namespace orlune
