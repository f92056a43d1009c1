#include "drivers/dialect/expressions.h"

#include <array>
#include <limits>
#include <string_view>
#include <utility>

namespace orlune::dialect {

namespace {

/// How deep conditions may be nested; far above what a page needs, far below what the stack holds.
constexpr int kDeepestNesting = 64;

bool StartsLiteral(const TokenCursor& cursor) {
  return cursor.Current().Kind == TokenKind::kLiteral || cursor.IsKeyword("yes") || cursor.IsKeyword("no") ||
         cursor.IsKeyword("Null") || cursor.IsKeyword("DateValue");
}

Literal ParseText(TokenCursor& cursor) {
  const std::vector<Literal>& literals = cursor.Current().Literals;
  if (literals.size() != 1 || !std::holds_alternative<TextPieces>(literals.front().Content))
    cursor.Fail("a text");
  return cursor.Advance().Literals.front();
}

ComparisonOperator ParseOperator(TokenCursor& cursor) {
  constexpr std::array<std::pair<std::string_view, ComparisonOperator>, 6> kOperators{
      {{"=", ComparisonOperator::kEqual},
       {"<>", ComparisonOperator::kNotEqual},
       {"<", ComparisonOperator::kLess},
       {"<=", ComparisonOperator::kLessOrEqual},
       {">", ComparisonOperator::kGreater},
       {">=", ComparisonOperator::kGreaterOrEqual}}};
  for (const auto& [symbol, comparison] : kOperators) {
    if (cursor.TakeSymbol(symbol)) return comparison;
  }
  cursor.Fail("a comparison");
}

class ConditionParser {
 public:
  explicit ConditionParser(TokenCursor& cursor) : cursor_(cursor) {}

  Condition ParseDisjunction() {
    return ParseJunction(Junction::Kind::kOr, "OR", [this] { return ParseConjunction(); });
  }

 private:
  Condition ParseConjunction() {
    return ParseJunction(Junction::Kind::kAnd, "AND", [this] { return ParseTerm(); });
  }

  template <class ParseOperand>
  Condition ParseJunction(Junction::Kind kind, std::string_view keyword, ParseOperand parseOperand) {
    Condition first = parseOperand();
    if (!cursor_.IsKeyword(keyword)) return first;
    Junction junction{kind, {}};
    junction.Terms.push_back(std::move(first));
    while (cursor_.TakeKeyword(keyword)) junction.Terms.push_back(parseOperand());
    return {std::move(junction)};
  }

  Condition ParseTerm() {
    if (nesting_ == kDeepestNesting) cursor_.Fail("a condition that is nested less deeply");
    ++nesting_;
    Condition term = ParseNestedTerm();
    --nesting_;
    return term;
  }

  Condition ParseNestedTerm() {
    if (cursor_.TakeKeyword("NOT")) {
      Junction negation{Junction::Kind::kNot, {}};
      negation.Terms.push_back(ParseTerm());
      return {std::move(negation)};
    }
    if (!cursor_.TakeSymbol("(")) return ParsePredicate();
    Condition inner = ParseDisjunction();
    cursor_.ExpectSymbol(")");
    return inner;
  }

  Condition ParsePredicate() {
    ColumnName left = ParseColumnName(cursor_);
    if (cursor_.TakeKeyword("IS")) {
      const bool isNegated = cursor_.TakeKeyword("NOT");
      cursor_.ExpectKeyword("NULL");
      return {NullTest{std::move(left), isNegated}};
    }
    if (cursor_.TakeKeyword("IN")) return {Membership{std::move(left), ParseLiteralList(cursor_)}};
    if (cursor_.TakeKeyword("LIKE")) {
      return {Comparison{std::move(left), ComparisonOperator::kLike, ParseText(cursor_)}};
    }
    const ComparisonOperator comparison = ParseOperator(cursor_);
    if (StartsLiteral(cursor_)) return {Comparison{std::move(left), comparison, ParseLiteral(cursor_)}};
    return {Comparison{std::move(left), comparison, ParseColumnName(cursor_)}};
  }

  TokenCursor& cursor_;
  int nesting_ = 0;
};

}  // namespace

ColumnName ParseColumnName(TokenCursor& cursor) {
  ColumnName column{{}, cursor.ExpectName()};
  if (cursor.TakeSymbol(".")) {
    column.Table = std::move(column.Name);
    column.Name = cursor.ExpectName();
  }
  return column;
}

Literal ParseLiteral(TokenCursor& cursor) {
  if (cursor.TakeKeyword("yes")) return {true};
  if (cursor.TakeKeyword("no")) return {false};
  if (cursor.TakeKeyword("Null")) return {Null{}};
  if (cursor.TakeKeyword("DateValue")) {
    cursor.ExpectSymbol("(");
    Literal date = ParseText(cursor);
    date.IsDate = true;
    cursor.ExpectSymbol(")");
    return date;
  }
  if (cursor.Current().Literals.size() != 1) cursor.Fail("a single value");
  return cursor.Advance().Literals.front();
}

std::vector<Literal> ParseLiteralList(TokenCursor& cursor) {
  std::vector<Literal> literals;
  cursor.ExpectSymbol("(");
  cursor.ForEachListed([&] {
    if (cursor.Current().Literals.size() > 1) {
      for (const Literal& item : cursor.Advance().Literals) literals.push_back(item);
    } else {
      literals.push_back(ParseLiteral(cursor));
    }
  });
  cursor.ExpectSymbol(")");
  return literals;
}

int ParseFixedNumber(TokenCursor& cursor) {
  const Literal literal = ParseLiteral(cursor);
  const auto* number = std::get_if<std::int64_t>(&literal.Content);
  if (number == nullptr || *number < 1 || *number > std::numeric_limits<int>::max()) {
    cursor.Fail("a positive number");
  }
  return static_cast<int>(*number);
}

std::optional<Condition> ParseWhere(TokenCursor& cursor) {
  if (!cursor.TakeKeyword("WHERE")) return std::nullopt;
  return ConditionParser(cursor).ParseDisjunction();
}

}  // namespace orlune::dialect
