#pragma once

#include <array>
#include <concepts>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "base/format_literal.h"

namespace orlune {

class Html;

/// Fixed markup: only a string literal converts to it.
class Markup {
 public:
  consteval Markup(const char* text) : text_(text) {}  // NOLINT(google-explicit-constructor)
  std::string_view Text() const { return text_; }

 private:
  std::string_view text_;
};

/// What replaces one placeholder: markup, a number, or a text with its context, for which it is escaped.
/// Refers to its text; for use within one expression.
class HtmlPart {
 public:
  HtmlPart(const Html& html);  // NOLINT(google-explicit-constructor)
  HtmlPart(Markup markup)      // NOLINT(google-explicit-constructor)
      : kind_(Kind::kMarkup), text_(markup.Text()) {}
  HtmlPart(std::integral auto number)  // NOLINT(google-explicit-constructor)
      : kind_(Kind::kNumber), number_(static_cast<std::int64_t>(number)) {}

  void AppendTo(std::string& html) const;
  std::size_t SizeUnescaped() const { return text_.size(); }

 private:
  enum class Kind { kMarkup, kNumber, kContent, kLabel, kAttribute, kScript, kScriptAttribute };

  HtmlPart(Kind kind, std::string_view text) : kind_(kind), text_(text) {}

  friend HtmlPart Content(std::string_view text);
  friend HtmlPart OptionLabel(std::string_view text);
  friend HtmlPart Attribute(std::string_view text);
  friend HtmlPart Script(std::string_view text);
  friend HtmlPart ScriptAttribute(std::string_view text);
  friend HtmlPart ConfiguredHtml(std::string_view text);

  Kind kind_;
  std::string_view text_;
  std::int64_t number_ = 0;
};

/// Text between tags: "<" becomes "&lt;" unless it begins one of a few harmless tags without attributes. "&"
/// is kept: stored texts contain character references.
HtmlPart Content(std::string_view text);
/// The label of an OPTION, in which an unclosed tag would hide the options that follow: every "<" becomes
/// "&lt;".
HtmlPart OptionLabel(std::string_view text);
/// Text within an attribute value in double quotes.
HtmlPart Attribute(std::string_view text);
/// Text within a string literal in apostrophes in a SCRIPT element. "\n" as two characters is kept: a line
/// break.
HtmlPart Script(std::string_view text);
/// The same for a script in an attribute value in double quotes, where character references are decoded
/// before the script is parsed.
HtmlPart ScriptAttribute(std::string_view text);
/// HTML from the hosting page's configuration; not escaped.
HtmlPart ConfiguredHtml(std::string_view text);

/// A page, or a fragment of one. Fixed markup comes only from string literals; everything else is an
/// `HtmlPart`, escaped for its context.
class Html {
 public:
  Html() = default;
  template <class... Parts>
  explicit Html(const FormatLiteral<sizeof...(Parts)>& format, const Parts&... parts) {
    Add(format, parts...);
  }

  template <class... Parts>
  Html& Add(const FormatLiteral<sizeof...(Parts)>& format, const Parts&... parts) {
    const std::array<HtmlPart, sizeof...(Parts)> filling{HtmlPart(parts)...};
    AddFormatted(format.Pieces(), filling);
    return *this;
  }
  Html& Add(const Html& piece) {
    text_ += piece.text_;
    return *this;
  }
  void Reserve(std::size_t bytes) { text_.reserve(bytes); }

  bool IsEmpty() const { return text_.empty(); }
  const std::string& Text() const& { return text_; }
  std::string Text() && { return std::move(text_); }

 private:
  /// There is one piece more than parts.
  void AddFormatted(std::span<const std::string_view> pieces, std::span<const HtmlPart> parts);

  void ReserveFor(std::span<const std::string_view> pieces, std::span<const HtmlPart> parts);

  std::string text_;
};

/// Whether `text` is a colour in the syntax of HTML: "#" and 3 or 6 hexadecimal digits, or a name of letters.
bool IsColour(std::string_view text);

}  // namespace orlune
