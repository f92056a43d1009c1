#include "drivers/dialect/ast.h"

namespace orlune::dialect {

bool Literal::IsFixed() const {
  if (std::holds_alternative<SplicedInteger>(Content)) return false;
  const auto* pieces = std::get_if<TextPieces>(&Content);
  if (pieces == nullptr) return true;
  for (const auto& piece : *pieces) {
    if (std::holds_alternative<SplicedText>(piece)) return false;
  }
  return true;
}

}  // namespace orlune::dialect
