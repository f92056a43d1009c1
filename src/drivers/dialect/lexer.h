#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "drivers/dialect/ast.h"
#include "platform/database.h"

namespace orlune::dialect {

enum class TokenKind { kName, kSymbol, kLiteral, kEnd };

struct Token {
  TokenKind Kind = TokenKind::kEnd;
  std::string_view Text;          ///< of a name or symbol; refers to the statement's text
  std::vector<Literal> Literals;  ///< of a literal: one, or the items of a spliced-in list
  std::size_t Position = 0;
};

/// The statement's tokens, ended by one of kind kEnd. A spliced-in value only ever becomes a literal or a
/// piece of one. Throws DialectError.
std::vector<Token> Tokenize(const StatementText& statement);

}  // namespace orlune::dialect
