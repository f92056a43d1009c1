#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "drivers/dialect/lexer.h"

namespace orlune::dialect {

/// A place among the tokens of a statement, moved on by what is recognised there.
class TokenCursor {
 public:
  /// Throws DialectError.
  explicit TokenCursor(const StatementText& statement) : tokens_(Tokenize(statement)) {}

  const Token& Current() const { return tokens_[index_]; }
  /// Consumes the current token, which is not the end.
  const Token& Advance() { return tokens_[index_++]; }

  bool IsKeyword(std::string_view keyword) const;
  /// Consumes the keyword or symbol; false when the current token is another.
  bool TakeKeyword(std::string_view keyword);
  bool TakeSymbol(std::string_view symbol);

  /// Consumes the keyword or symbol. Throws DialectError when the current token is another.
  void ExpectKeyword(std::string_view keyword);
  void ExpectSymbol(std::string_view symbol);
  std::string ExpectName();
  void ExpectEnd() const;

  /// Calls `parseItem` for each item of a list with commas between.
  template <class ParseItem>
  void ForEachListed(ParseItem parseItem) {
    do {
      parseItem();
    } while (TakeSymbol(","));
  }

  /// Throws DialectError: something else was `expected` here.
  [[noreturn]] void Fail(std::string_view expected) const;

 private:
  std::vector<Token> tokens_;
  std::size_t index_ = 0;
};

}  // namespace orlune::dialect
