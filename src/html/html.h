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

/// Markup of the source itself: only a string literal converts to it.
class Markup {
 public:
  consteval Markup(const char* text) : text_(text) {}  // NOLINT(google-explicit-constructor)
  std::string_view Text() const { return text_; }

 private:
  std::string_view text_;
};

/// What fills one place of markup: markup, a number, or a text that says where it is going to stand, so that
/// it cannot be taken for markup or script there. Refers to its text; lives within one expression.
class HtmlPart {
 public:
  HtmlPart(const Html& html);  // NOLINT(google-explicit-constructor)
  HtmlPart(Markup markup)      // NOLINT(google-explicit-constructor)
      : kind_(Kind::kMarkup), text_(markup.Text()) {}
  HtmlPart(std::integral auto number)  // NOLINT(google-explicit-constructor)
      : kind_(Kind::kNumber), number_(static_cast<std::int64_t>(number)) {}

  void AppendTo(std::string& html) const;

 private:
  enum class Kind { kMarkup, kNumber, kContent, kAttribute, kScript, kScriptAttribute };

  HtmlPart(Kind kind, std::string_view text) : kind_(kind), text_(text) {}

  friend HtmlPart Content(std::string_view text);
  friend HtmlPart Attribute(std::string_view text);
  friend HtmlPart Script(std::string_view text);
  friend HtmlPart ScriptAttribute(std::string_view text);
  friend HtmlPart ConfiguredHtml(std::string_view text);

  Kind kind_;
  std::string_view text_;
  std::int64_t number_ = 0;
};

/// Text between tags: a "<" is written as "&lt;" unless it begins one of a few harmless tags without
/// attributes.
HtmlPart Content(std::string_view text);
/// Text of an attribute value between double quotes.
HtmlPart Attribute(std::string_view text);
/// Text of a string between apostrophes in a SCRIPT element. The pairs of backslash and "n" stay line breaks.
HtmlPart Script(std::string_view text);
/// The same in a script that stands in an attribute between double quotes, where character references would
/// be decoded first.
HtmlPart ScriptAttribute(std::string_view text);
/// HTML that the hosting page's configuration provides; stands as it is.
HtmlPart ConfiguredHtml(std::string_view text);

/// A page, or a piece of one. Fixed markup comes only from literals of the source; everything else goes in as
/// a part that knows its place.
class Html {
 public:
  Html() = default;
  template <class... Parts>
  explicit Html(FormatLiteral<sizeof...(Parts)> format, const Parts&... parts) {
    Add(format, parts...);
  }

  template <class... Parts>
  Html& Add(FormatLiteral<sizeof...(Parts)> format, const Parts&... parts) {
    const std::array<HtmlPart, sizeof...(Parts)> filling{HtmlPart(parts)...};
    AddFormatted(format.Text(), filling);
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
  void AddFormatted(std::string_view format, std::span<const HtmlPart> parts);

  std::string text_;
};

/// Whether `text` is a colour as HTML writes it: "#" and 3 or 6 hexadecimal digits, or a name of letters.
bool IsColour(std::string_view text);

}  // namespace orlune
