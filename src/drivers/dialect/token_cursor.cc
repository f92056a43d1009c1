#include "drivers/dialect/token_cursor.h"

#include "drivers/dialect/dialect_error.h"

namespace orlune::dialect {

bool TokenCursor::IsKeyword(std::string_view keyword) const {
  return Current().Kind == TokenKind::kName && SameName(Current().Text, keyword);
}

bool TokenCursor::TakeKeyword(std::string_view keyword) {
  const bool isTaken = IsKeyword(keyword);
  if (isTaken) ++index_;
  return isTaken;
}

bool TokenCursor::TakeSymbol(std::string_view symbol) {
  const bool isTaken = Current().Kind == TokenKind::kSymbol && Current().Text == symbol;
  if (isTaken) ++index_;
  return isTaken;
}

void TokenCursor::ExpectKeyword(std::string_view keyword) {
  if (!TakeKeyword(keyword)) Fail(keyword);
}

void TokenCursor::ExpectSymbol(std::string_view symbol) {
  if (!TakeSymbol(symbol)) Fail(symbol);
}

std::string TokenCursor::ExpectName() {
  if (Current().Kind != TokenKind::kName) Fail("a name");
  return std::string(Advance().Text);
}

void TokenCursor::ExpectEnd() const {
  if (Current().Kind != TokenKind::kEnd) Fail("the end of the statement");
}

void TokenCursor::Fail(std::string_view expected) const {
  throw DialectError(Current().Position, "expected " + std::string(expected));
}

}  // namespace orlune::dialect
