#pragma once

#include <optional>
#include <vector>

#include "drivers/dialect/ast.h"
#include "drivers/dialect/token_cursor.h"

namespace orlune::dialect {

/// The parts that several kinds of statements have. All read from the cursor on, and throw DialectError.
ColumnName ParseColumnName(TokenCursor& cursor);
Literal ParseLiteral(TokenCursor& cursor);
/// Between parentheses; a spliced-in list of whole numbers gives each of them.
std::vector<Literal> ParseLiteralList(TokenCursor& cursor);
/// A positive number of the fixed text.
int ParseFixedNumber(TokenCursor& cursor);
/// Nothing when there is no WHERE.
std::optional<Condition> ParseWhere(TokenCursor& cursor);

}  // namespace orlune::dialect
