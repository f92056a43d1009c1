#pragma once

#include <array>
#include <concepts>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/format_literal.h"
#include "platform/database.h"

namespace orlune {

/// Fixed text of a statement. Only a string literal converts to it.
class SqlLiteral {
 public:
  consteval SqlLiteral(const char* text) : text_(text) {}  // NOLINT(google-explicit-constructor)
  std::string_view Text() const { return text_; }

 private:
  std::string_view text_;
};

/// A statement, or a fragment of one, that records which spans of its text are values. Fixed text comes only
/// from string literals, so user input can never become SQL.
class Statement {
 public:
  Statement() = default;

  /// `format` with its placeholders replaced in order. A text or a number becomes a value; a `SqlLiteral` is
  /// SQL; a `Statement` keeps its SQL and its values.
  template <class... Parts>
  explicit Statement(const FormatLiteral<sizeof...(Parts)>& format, const Parts&... parts) {
    Add(format, parts...);
  }

  template <class... Parts>
  Statement& Add(const FormatLiteral<sizeof...(Parts)>& format, const Parts&... parts) {
    const std::array<Part, sizeof...(Parts)> filling{Part(parts)...};
    AddFormatted(format.Pieces(), filling);
    return *this;
  }

  /// The text in the system's SQL dialect, including the values, unescaped.
  const std::string& Text() const { return text_; }
  bool IsEmpty() const { return text_.empty(); }

  /// For `Connection`. Valid until this statement changes.
  operator StatementText() const { return {text_, values_}; }  // NOLINT(google-explicit-constructor)

 private:
  class Part {
   public:
    explicit Part(std::string_view value) : text_(value), isValue_(true) {}
    explicit Part(const std::string& value) : text_(value), isValue_(true) {}
    explicit Part(const char* value) : text_(value), isValue_(true) {}
    explicit Part(std::integral auto value)
        : number_(std::to_string(value)), text_(number_), isValue_(true) {}
    explicit Part(const SqlLiteral& literal) : text_(literal.Text()) {}
    explicit Part(const Statement& piece) : text_(piece.text_), values_(piece.values_) {}
    Part(const Part&) = delete;
    Part& operator=(const Part&) = delete;

    void AppendTo(Statement& statement) const;

   private:
    std::string number_;
    std::string_view text_;
    std::span<const ValueSpan> values_;
    bool isValue_ = false;
  };

  /// There is one piece more than parts.
  void AddFormatted(std::span<const std::string_view> pieces, std::span<const Part> parts);

  std::string text_;
  std::vector<ValueSpan> values_;
};

}  // namespace orlune
