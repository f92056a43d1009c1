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
  /// The current token, which is not the end, and past it.
  const Token& Advance() { return tokens_[index_++]; }

  bool IsKeyword(std::string_view keyword) const;
  /// Past the keyword or symbol, with true, or nowhere.
  bool TakeKeyword(std::string_view keyword);
  bool TakeSymbol(std::string_view symbol);

  /// Past what has to stand here. Throws DialectError.
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
